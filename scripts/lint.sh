#!/usr/bin/env bash
# Runs clang-tidy on all sources of the program, with the build folder $1 and $2 jobs. A source that
# was clean is checked again only after it was compiled again or .clang-tidy has changed.
set -euo pipefail
cd "$(dirname "$0")/.."
export build=$1
jobs=${2:-2}

lint() {
    local source=${1#"$PWD/src/"}
    local stamp=$build/lint/$source.clean
    # A glob, since only the build knows the target; ninja writes the object again whenever the
    # source, a header or an option has changed.
    local object
    object=$(echo "$build"/src/CMakeFiles/*.dir/"$source".o)
    if [ -e "$object" ] && [ "$stamp" -nt "$object" ] && [ "$stamp" -nt .clang-tidy ]; then
        return
    fi
    mkdir -p "${stamp%/*}"
    clang-tidy -p "$build" --quiet "$1" && touch "$stamp"
}
export -f lint

# The build writes the list of sources, so lint and build cannot drift apart. The filter removes the
# counts of warnings in system headers, one line per file.
xargs -a "$build/sources.txt" -d '\n' -n 1 -P "$jobs" bash -c 'lint "$1"' lint 2>&1 |
    { grep --line-buffered -vE '^[0-9]+ warnings? generated\.$' || true; }
