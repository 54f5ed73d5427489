#!/usr/bin/env bash
# Checks a package and the pages in it with the validators of Debian and of the desktops.
#   scripts/check_package.sh PACKAGE.deb
# Fails on every finding but those listed here.
set -euo pipefail

known=(
    no-copyright-file         # no licence has been chosen, so none is stated
    metadata-license-missing  # likewise
    cid-maybe-not-rdns        # the id is under "invalid."
)
package=$(realpath "$1")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
dpkg-deb -x "$package" "$folder"
share=$folder/usr/share
failed=0

# Shows the lines of a command's output that match the pattern: its findings.
check() {  # pattern command...
    local pattern=$1 output status=0 findings line tag
    shift
    echo "== $1"
    output=$("$@" 2>&1) || status=$?
    findings=$(grep -E "$pattern" <<<"$output") || findings=
    if [ "$status" -ge 126 ] || { [ "$status" -ne 0 ] && [ -z "$findings" ]; }; then
        echo "$1 did not do its work (status $status): $output"
        failed=1
    fi
    [ -n "$findings" ] || return 0
    while IFS= read -r line; do
        for tag in "${known[@]}"; do
            [[ $line == *" $tag"* ]] && echo "$line (known)" && continue 2
        done
        echo "$line"
        failed=1
    done <<<"$findings"
}

format_page() {
    man --warnings --encoding=UTF-8 --local-file --troff-device=utf8 --ditroff "$1" 2>&1 >/dev/null
}

check . desktop-file-validate "$share"/applications/*.desktop
check '^[EWI]: ' appstreamcli validate --no-net "$share"/metainfo/*.xml
for page in "$share"/man/man1/*; do
    check . format_page "$page"
done
check '^[EWI]: ' lintian --allow-root --tag-display-limit 0 "$package"
exit $failed
