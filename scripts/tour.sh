#!/usr/bin/env bash
# Plays the tour offscreen at desktop size, at 240 x 320 and in dark colours.
#   scripts/tour.sh [DIR [BUILD]]   plays BUILD/velmora_tour (default build); pictures go to
#                                   DIR/desktop, DIR/small and DIR/dark (default BUILD/tour)
#   scripts/tour.sh DIR BUILD NAME WIDTH HEIGHT   plays it once, at that size, into DIR/NAME
set -euo pipefail
root=$(realpath "$(dirname "$0")/..")
build=$(realpath -m "${2:-$root/build}")
folder=$(realpath -m "${1:-$build/tour}")

# Without one Qt chooses one itself and prints a warning.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    XDG_RUNTIME_DIR=$(mktemp -d)
    export XDG_RUNTIME_DIR
    trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
fi

play() {  # name width height options...
    local name=$1 width=$2 height=$3
    shift 3
    mkdir -p "$folder"
    local screen=$folder/.screen-$name.json
    printf '{"screens": [{"name": "%s", "x": 0, "y": 0, "width": %d, "height": %d, "logicalDpi": 96, "dpr": 1}]}\n' \
        "$name" "$width" "$height" >"$screen"
    QT_QPA_PLATFORM="offscreen:configfile=$screen" "$build/velmora_tour" "$folder/$name" "$@"
    rm -f "$screen"
}

if [ $# -gt 2 ]; then
    play "$3" "$4" "$5"
    exit
fi
play desktop 1280 800
play small 240 320
play dark 1280 800 --dark
