# The words of the transcripts. Each command of velmora-cli is one, on the volume v.db.
v() { "$cli" --volume v.db "$@"; }
w() { "$cli" --volume w.db "$@"; }
for group in profile foods menus recipes exlib categories search diet weight bmi exercises report \
    purge undo redo backup backups restore verify
do eval "$group() { v $group \"\$@\"; }"
done
ann="--profile Ann --date 2026-06-02"
noon="$ann --time 12:30 --meal Lunch"
apple="--category Fruit --name Apple --type raw"
morning="$ann --time 07:30"
days="--profile Ann --from 2026-06-01 --to 2026-06-30"
man="--sex male --birth 1996-06-01 --height 180 --activity 0"
plan="--start 2026-06-01 --start-weight 80 --goal 2026-09-01 --goal-weight 80"

# The columns of 54 nutrients, of which some are given: values 0=52 3=1.5
values() {
    awk -v given="$*" 'BEGIN {
        count = split(given, parts, "[ =]")
        for (i = 1; i < count; i += 2) value[parts[i]] = parts[i + 1]
        for (i = 0; i < 54; i++) printf "%s,", i in value ? value[i] : 0
    }'
}
# A line of a file of foods: food CATEGORY NAME TYPE NUTRIENTS SERVINGS
food() { printf '1,%s,%s,%s,%s%s\r\n' "$1" "$2" "$3" "$(values ${4-0=1})" "${5-cup,100,}"; }
# Of menus and recipes, with the column that is read and not written:
# part KIND CATEGORY OWNER NAME NUTRIENTS SERVING
part() { printf '7,%s,%s,%s,%s,%s0,%s\r\n' "$1" "$2" "$3" "$4" "$(values ${5-0=1})" "${6-cup,1,}"; }
good() { food Soups Soup "$@"; }
lunch() { part Menu Week Lunch ""; part Food Week Lunch "$1"; }
parts() { menus show --category Week --name Lunch | grep "t . name" | joined; }
text=$(printf '%0128d')  # longer than a record's texts
long=$(printf '%064d')   # longer than a serving's
# Rows whose value is not 0, on one line.
some() { grep -v "$(printf '\t0$')" | joined; }
# Without the date and time of a backup.
dated() { sed -E 's/[0-9]{4}-[0-9]{2}-[0-9]{2}(.)[0-9:]{6,8}/DATE/g'; }
joined() { paste -sd'~' | sed 's/~/; /g'; }
show() { tr -d '\r' < "$1"; }
# The report of a day: one DAY TYPES GROUPING
one() { report out.csv --profile Ann --from $1 --to $1 --types $2 --by $3; show out.csv | sed 1,4d; }
# A record of more than half a page.
fill() { { echo "<Recipes>"; part Recipe Fill Fill "" 0=1 "cup,1,$(printf %02400d),"; } > fill
    recipes import fill --existing add; }
# Spoils the page of the place with that number at which the bytes stand in the volume.
spoil() { at=$(LC_ALL=C grep -obUaP "$1" v.db | sed -n "$2s/:.*//p")
    printf '\177' | dd of=v.db bs=1 seek=$((at / 8192 * 8192 + 1)) conv=notrunc 2> /dev/null; }
# Kind to energy of all that Ann ate, sorted.
eaten() { diet list $ann | sed 1d | cut -f4-10 | sort; }
# What a quick line adds to Ann's lunch, without the titles; kept in "added".
quick() {
    v diet quick --profile Ann --date 2026-06-02 --meal Lunch "$@" > quick
    status=$?; sed 1d quick | tee -a added; return $status
}
