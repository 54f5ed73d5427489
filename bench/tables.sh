#!/usr/bin/env bash
# Imports the tables of a FoodData Central download, beside the sqlite3 shell that imports the two
# large ones of them, food.csv and food_nutrient.csv, into bare tables.
#   bench/tables.sh FOLDER [ROUNDS]
# The build folder is build/ (./run --build-only).
set -euo pipefail
cd "$(dirname "$0")/.."
folder=$(realpath "$1")
rounds=${2:-3}
build=build
work=$(mktemp -d "$build/bench.XXXXXX")
trap 'rm -rf "$work"' EXIT

printf ".import --csv '%s' %s\n" "$folder/food.csv" food "$folder/food_nutrient.csv" food_nutrient \
    >"$work/import.sql"
rows=$(($(cat "$folder/food.csv" "$folder/food_nutrient.csv" | wc -l) - 2))
figures=$("$build/bench_compare" "$rounds" \
    "rm -f $work/v.db; $build/velmora-cli --volume $work/v.db foods import-fdc '$folder' >/dev/null 2>&1" \
    "rm -f $work/s.db; sqlite3 $work/s.db <$work/import.sql")
printf '%-44s %s\n' "import of $rows rows / sqlite3 shell" "$figures"
sed -E 's|.*\(([0-9.]+) ms / ([0-9.]+) ms;.*|\1 \2|' <<<"$figures" |
    awk -v rows="$rows" '{ printf "%-44s %.0f / %.0f\n", "rows a second", 1000 * rows / $1, 1000 * rows / $2 }'
