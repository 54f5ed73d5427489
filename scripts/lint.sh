#!/usr/bin/env bash
# clang-tidy over the core's sources, from the compile commands of the build folder $1.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
jobs=${2:-2}
# The build writes the core's source list, so lint and build cannot drift apart.
xargs -a "$build/core-sources.txt" -n 4 -P "$jobs" clang-tidy -p "$build" --quiet 2>/dev/null
