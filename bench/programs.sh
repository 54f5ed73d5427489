#!/usr/bin/env bash
# Compares whole programs: every figure is a ratio, the median over pairs run in turn.
#   bench/programs.sh FOOD_FILE [ROUNDS]
# FOOD_FILE is a large food exchange file; the build folder is build/ (./run --build-only).
set -euo pipefail
cd "$(dirname "$0")/.."
food_file=$(realpath "$1")
rounds=${2:-15}
build=build
work=$(mktemp -d "$build/bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME="$work/config"
cli=$build/velmora-cli
compare() { printf '%-44s ' "$1"; "$build/bench_compare" "$rounds" "$2" "$3" 2>/dev/null; }

# The shell's bare table: one text column per field, also for the empty one after the last comma.
columns=$(seq -s, -f 'c%.0f' 1 79)
cat >"$work/import.sql" <<SQL
create table foods($columns);
.mode csv
.import --skip 2 '$food_file' foods
SQL
printf '.mode csv\n.once %s\nselect * from foods;\n' "$work/shell.csv" >"$work/export.sql"

compare "import of foods / sqlite3 shell" \
    "rm -f $work/v.db; $cli --volume $work/v.db foods import '$food_file' >/dev/null 2>&1" \
    "rm -f $work/s.db; sqlite3 $work/s.db <$work/import.sql 2>/dev/null"
compare "export of foods / sqlite3 shell" \
    "$cli --volume $work/v.db foods export $work/out.csv >/dev/null 2>&1" \
    "sqlite3 $work/s.db <$work/export.sql"
cmp "$food_file" "$work/out.csv" && echo "    the exported file is the imported one, byte for byte"

# Four times the foods, in four times the categories.
{ head -n 2 "$food_file"
  for copy in 1 2 3 4; do
      sed -n '3,$p' "$food_file" | grep -av '^<End>' | sed -E "s/^([0-9]+,\")/\1$copy /"
  done
  printf '<End>\r\n'; } >"$work/four.csv"
compare "import of four times the foods / once" \
    "rm -f $work/v4.db; $cli --volume $work/v4.db foods import $work/four.csv >/dev/null 2>&1" \
    "rm -f $work/v1.db; $cli --volume $work/v1.db foods import '$food_file' >/dev/null 2>&1"

"$build/bench_fill" "$work/small.db" Ann 1000
"$build/bench_fill" "$work/large.db" Ann 1000000
compare "a day of 1,000,000 entries / of 1,000" \
    "$cli --volume $work/large.db diet day --profile Ann --date 2026-01-31 >/dev/null" \
    "$cli --volume $work/small.db diet day --profile Ann --date 2026-01-31 >/dev/null"

compare "find over the catalogue / grep over the file" \
    "$cli --volume $work/v.db foods find 'milk' >/dev/null" \
    "grep -i milk '$food_file' >/dev/null"

"$build/bench_fill" "$work/start.db" Ann 55000 today
"$cli" --volume "$work/start.db" foods import "$food_file" >/dev/null 2>&1
for window in furnished empty; do
    rounds=30 compare "start to first paint / $window Qt window" \
        "$build/bench_startup velmora $work/start.db Ann" "$build/bench_startup $window"
done

# Ten years, reported into one file. The shell's bare tables have the rows of each diary, one text
# column per field.
days=3650
"$build/bench_fill" "$work/ten.db" Ann $((days * 15)) all
report="$cli --volume $work/ten.db report $work/report.csv --profile Ann --to 2026-01-31"
first=2016-02-04
$report --from $first --by type
awk -v out="$work" '
    function columns(count,    i, list) {
        for (i = 1; i <= count; i++) list = list (i > 1 ? "," : "") "c" i
        return list
    }
    /^(Diet|Exercises|Weights)\r?$/ { name = $0; sub(/\r/, "", name); getline; next }
    /^\r?$/ { name = ""; next }
    name { print > (out "/" name ".csv"); fields[name] = split($0, unused, ",") }
    END {
        for (name in fields)
            printf "create table %s(%s);\n.import --csv %s/%s.csv %s\n",
                   name, columns(fields[name]), out, name, name
    }' "$work/report.csv" >"$work/rows.sql"
sqlite3 "$work/rows.db" <"$work/rows.sql"
printf '.mode csv\n.once %s\nselect * from Diet;\n' "$work/rows.csv" >"$work/dump.sql"
printf '.once %s\nselect * from Exercises;\n' "$work/rows2.csv" >>"$work/dump.sql"
printf '.once %s\nselect * from Weights;\n' "$work/rows3.csv" >>"$work/dump.sql"
for by in date type; do
    compare "report of ten years by $by / sqlite3 shell" \
        "$report --from $first --by $by" "sqlite3 $work/rows.db <$work/dump.sql"
done
compare "report of ten years / of one, in memory" \
    "$report --from $first" "$report --from 2025-02-01"
compare "backup of ten years / a synced copy of the volume" \
    "$cli --volume $work/ten.db backup $work/backup.db >/dev/null" \
    "cp $work/ten.db $work/copy.db && sync $work/copy.db"
compare "purge of ten years / a copy of the volume" \
    "cp $work/ten.db $work/purge.db && $cli --volume $work/purge.db purge --profile Ann \
        --from $first --to 2026-01-31 --diet --weights --exercises --yes >/dev/null 2>&1" \
    "cp $work/ten.db $work/purge.db"

"$build/bench_catalogue" "$food_file" "$rounds" 2>/dev/null
"$build/bench_recording" "$food_file" "$rounds" 2>/dev/null
