#!/usr/bin/env bash
# Takes the pictures of the help page again: plays the tour on a screen of 640 x 480 and copies the
# pictures that docs/Velmora.htm shows to docs/pictures.
#   scripts/manual_pictures.sh [BUILD]   plays BUILD/velmora_tour (default build)
set -euo pipefail
root=$(realpath "$(dirname "$0")/..")
build=$(realpath "${1:-$root/build}")
folder=/tmp/Ann  # messages in the pictures name files in it
mkdir "$folder"
trap 'rm -rf "$folder"' EXIT

"$root/scripts/tour.sh" "$folder" "$build" Diary 640 480

# A picture of the tour has a number and the step's title: "61-the-week's-exercises.png".
declare -A taken
for picture in "$folder"/Diary/*.png; do
    name=${picture##*/}
    name=${name#*-}
    taken[${name//\'/}]=$picture
done
mapfile -t shown < <(grep -o 'src="pictures/[^"]*"' "$root/docs/Velmora.htm" | cut -d/ -f2 | tr -d '"')
for name in "${shown[@]}"; do
    [ -n "${taken[$name]:-}" ] || { echo "The tour has no picture $name." >&2; exit 1; }
done
mkdir -p "$root/docs/pictures"
rm -f "$root"/docs/pictures/*.png
for name in "${shown[@]}"; do
    cp "${taken[$name]}" "$root/docs/pictures/$name"
done
du -sh "$root/docs/pictures"
