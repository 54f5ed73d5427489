#!/usr/bin/env bash
# Checks the floors of the house: includes point down, no two files include each other in a
# circle, and the core includes no widget header.
set -euo pipefail
cd "$(dirname "$0")/.."

# The folders are floors, each on one of its own. Over all of them lie layers: the core, the
# controls, the windows, the program with windows. A file includes from its own folder or below, and
# from its own layer or below. What belongs to velmora_ui is a window, controls/ aside.
ui_files=$(find src -mindepth 2 -name CMakeLists.txt -print0 | xargs -0 \
           awk '/target_sources/ { ui = /velmora_ui/ }
                ui && match($0, /[A-Za-z]+\.(h|cpp)/) {
                    folder = FILENAME; sub(/[^\/]*$/, "", folder)
                    print folder substr($0, RSTART, RLENGTH) }')

git ls-files --cached --others --exclude-standard -- 'src/*.h' 'src/*.cpp' | sort -u |
    while read -r file; do
        # A file may have no include, or be deleted and not yet committed.
        { [ -f "$file" ] && grep -oE '^#include ["<][^">]+[">]' "$file"; } |
            sed -E "s|^#include ([\"<])(.*)[\">]|$file \1 \2|" || true
    done |
    awk -v ui_list="$ui_files" '
        BEGIN {
            n = split(ui_list, ui_array, "\n")
            for (i = 1; i <= n; i++) {
                base = ui_array[i]; sub(/\.(h|cpp)$/, "", base); is_ui[base] = 1
            }
            n = split("platform controls store/engine store/records store app profile " \
                      "catalogue/items catalogue/exchange catalogue/pick catalogue/view " \
                      "diary exercise report cli frame", floors, " ")
            for (i = 1; i <= n; i++) floor[floors[i]] = i
            floor["."] = n + 1
            # Two that stand side by side.
            barred["catalogue/pick"] = "catalogue/exchange"
        }
        function base_of(path) { sub(/\.(h|cpp)$/, "", path); return path }
        function folder_of(path) {
            sub(/^src\//, "", path)
            if (path !~ /\//) return "."
            sub(/\/[^\/]*$/, "", path); return path
        }
        function floor_of(path) { return floor[folder_of(path)] }
        function layer_of(path,    base) {
            base = base_of(path)
            if (folder_of(path) == ".") return 4
            if (base ~ /^src\/controls\//) return 2
            return is_ui[base] ? 3 : 1
        }
        {
            file = $1; kind = $2; target = $3
            if (kind == "<") {
                if (layer_of(file) == 1 && target ~ /^(QtWidgets|QtGui|Q(Application|GuiApplication|Widget|Dialog|MessageBox|MainWindow|TreeView|TableView|ListView|FileDialog|Painter|Menu|Action|Color|Icon|Pixmap|Image|Font|Label|LineEdit|ComboBox)$)/) {
                    print file ": the core includes <" target ">"; bad = 1
                }
                next
            }
            path = "src/" target
            if (floor_of(path) == "") { print file ": includes unknown " target; bad = 1; next }
            if (floor_of(path) > floor_of(file)) {
                print file ": includes " target ", which stands on a higher floor"; bad = 1
            }
            if (barred[folder_of(file)] == folder_of(path)) {
                print file ": includes " target ", of which its folder is to know nothing"; bad = 1
            }
            if (layer_of(path) > layer_of(file)) {
                print file ": includes " target ", which lies in a higher layer"; bad = 1
            }
            if (file ~ /\.h$/) edges[file] = edges[file] " " path
        }
        function visit(node,    list, count, i) {
            state[node] = 1
            count = split(edges[node], list, " ")
            for (i = 1; i <= count; i++) {
                if (state[list[i]] == 1) { print "circle of includes through " node " and " list[i]; bad = 1 }
                else if (!state[list[i]]) visit(list[i])
            }
            state[node] = 2
        }
        END {
            for (node in edges) nodes[++total] = node
            for (k = 1; k <= total; k++) if (!state[nodes[k]]) visit(nodes[k])
            exit bad
        }'
echo "Layering holds."
