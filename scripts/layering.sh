#!/usr/bin/env bash
# Checks the layers of the sources: includes point down, there is no circle of includes, and the core
# includes no widget header.
set -euo pipefail
cd "$(dirname "$0")/.."

# Each folder is a floor of its own. Independently of that, each file belongs to a layer: the core,
# the controls, the windows, or the program with windows. A file may include from its own floor or
# below, and from its own layer or below. Files of velmora_ui outside controls/ are windows.
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
            n = split("platform controls store/engine store/records store/backup store/search store app " \
                      "profile catalogue/items catalogue/exchange catalogue/tables catalogue/share " \
                      "catalogue/pick catalogue/view " \
                      "diary diary/weight exercise report cli frame", floors, " ")
            for (i = 1; i <= n; i++) floor[floors[i]] = i
            floor["."] = n + 1
            # Neighbours that must not include each other.
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
                print file ": includes " target ", which is on a higher floor"; bad = 1
            }
            if (barred[folder_of(file)] == folder_of(path)) {
                print file ": includes " target ", which its folder must not include"; bad = 1
            }
            if (layer_of(path) > layer_of(file)) {
                print file ": includes " target ", which is in a higher layer"; bad = 1
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
