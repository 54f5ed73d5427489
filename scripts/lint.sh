#!/usr/bin/env bash
# clang-tidy over all sources of the program, from the compile commands of the build folder $1,
# with $2 jobs.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
jobs=${2:-2}
# The build writes the list of sources, so lint and build cannot drift apart. Left out are the
# counts of warnings in system headers, a line each file.
xargs -a "$build/sources.txt" -d '\n' -n 1 -P "$jobs" clang-tidy -p "$build" --quiet 2>&1 |
    { grep --line-buffered -vE '^[0-9]+ warnings? generated\.$' || true; }
