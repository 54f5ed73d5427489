#!/usr/bin/env bash
# clang-tidy over src/, from the compile commands of the build folder $1, with $2 jobs.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
jobs=${2:-2}
# Left out are the counts of warnings in system headers, a line each file.
git ls-files -z --cached --others --exclude-standard 'src/*.cpp' |
    xargs -0 -n 1 -P "$jobs" clang-tidy -p "$build" --quiet 2>&1 |
    { grep -vE '^[0-9]+ warnings? generated\.$' || true; }
