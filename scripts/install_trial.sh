#!/usr/bin/env bash
# Installs the Debian package into a clean Debian system made for that, uses it there as an ordinary
# user, plays the tour, removes the package, and shows that the user's data is as it was.
#   scripts/install_trial.sh [FOLDER]    pictures of the tour go to FOLDER (default
#                                        build-package/trial)
# Needs root, and the network that apt uses. The system is of the same release as this one and comes
# from the same mirror; it is deleted at the end.
set -euo pipefail
pictures=$(realpath -m "${1:-$(dirname "$0")/../build-package/trial}")
cd "$(dirname "$0")/.."

# Mounts and processes of the trial end with it.
if [ "${VELMORA_TRIAL:-}" != inside ]; then
    scripts/setup.sh --trial
    package=$(./package --build-only | tail -1)
    cmake --build build-package -j"$(nproc)" --target velmora_tour >&2
    export VELMORA_TRIAL=inside
    exec unshare --mount --pid --fork --kill-child scripts/install_trial.sh "$pictures" "$package"
fi
package=$2
root=$(mktemp -d)
chmod 755 "$root"
trap 'umount "$root/proc" 2>/dev/null || true; rm -rf --one-file-system "$root" "$root.log"' EXIT

say() { echo "== $*"; }
fail() { echo "FAILED: $*" >&2; exit 1; }
in_root() {
    chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}
as_ann() {  # script
    chroot --userspec=ann:ann "$root" /usr/bin/env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 HOME=/home/ann \
        QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=/home/ann/run sh -c "cd && $1"
}
packages() { in_root dpkg-query -W -f='${Package}\n' | sort; }

# The lists of this machine's Debian release, "URI SUITE".
lists=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE)' 'Created-By: Packages' 'Origin: Debian' | sort -u)
codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
mirror=$(awk -v suite="$codename" '$2 == suite { print $1; exit }' <<<"$lists")

say "A clean system"
debootstrap --variant=minbase "$codename" "$root" "$mirror" >"$root.log" || { tail "$root.log"; exit 1; }
awk '{ print "deb", $1, $2, "main" }' <<<"$lists" >"$root/etc/apt/sources.list"
cp /etc/resolv.conf "$root/etc/"
mount -t proc proc "$root/proc"
in_root apt-get update -qq
in_root useradd --create-home --user-group ann
as_ann "mkdir -m 700 run"
before=$(packages)
in_root cat /etc/debian_version
wc -l <<<"$before"

say "Installed"
cp "$package" "$root/tmp/velmora.deb"
in_root apt-get install -qq --no-install-recommends /tmp/velmora.deb >"$root/tmp/log" 2>&1 || { tail "$root/tmp/log"; exit 1; }
echo "with $(($(packages | wc -l) - $(wc -l <<<"$before") - 1)) other packages"
in_root dpkg --verify velmora || fail "files differ from the package's"
in_root dpkg -L velmora | grep -vE '^/usr(/share|/bin)?$'

say "The window program starts, with its volume in the user's data folder"
as_ann 'timeout 3 velmora; [ $? -eq 124 ]' || fail "velmora ended"
volume=/home/ann/.local/share/velmora/VelmoraDb.db
[ -s "$root$volume" ] || fail "no volume in the user's data folder"
[ ! -e "$root/usr/bin/VelmoraDb.db" ] || fail "a volume beside the program"

say "The tour"
in_root apt-get install -qq --no-install-recommends libqt6test6 >"$root/tmp/log" 2>&1 || { tail "$root/tmp/log"; exit 1; }
cp build-package/velmora_tour "$root/usr/bin/"
as_ann "velmora_tour tour" || fail "the tour ended with status $?"
rm "$root/usr/bin/velmora_tour"
mkdir -p "$pictures"
rm -f "$pictures"/*.png
cp "$root"/home/ann/tour/*.png "$pictures"
echo "copied to $pictures"

say "The command line"
diary='velmora-cli diet day --profile Ann --date 2026-05-31'
as_ann "velmora-cli foods import /usr/share/velmora/starter-foods.csv
        velmora-cli profile create Ann --sex female --birth 1990-03-14 --height 170 --activity light \
            --start 2026-01-05 --start-weight 72 --goal-weight 66 --rate 0.5 --diet prudent
        velmora-cli diet quick --profile Ann --date 2026-05-31 --meal breakfast '2 eggs, 1 apple' && $diary >day"
as_ann 'timeout 3 velmora; [ $? -eq 124 ]' || fail "velmora ended"

say "A copy of the program alone is portable"
as_ann "mkdir stick && cp /usr/bin/velmora-cli stick && stick/velmora-cli foods import /usr/share/velmora/starter-foods.csv"
[ -s "$root/home/ann/stick/VelmoraDb.db" ] || fail "no volume beside the copy"

say "Removed"
sum=$(sha256sum <"$root$volume")
in_root apt-get purge -qq velmora >/dev/null 2>&1
for program in velmora velmora-cli; do
    ! as_ann "command -v $program" || fail "$program is still there"
done
left=$(find "$root" -xdev \( -path "$root/home" -o -path "$root/tmp" \) -prune -o -iname '*velmora*' -print)
[ -z "$left" ] || fail "left: $left"
[ "$(sha256sum <"$root$volume")" = "$sum" ] || fail "the volume has changed"
echo "$volume is as it was"

say "Installed again"
in_root apt-get install -qq --no-install-recommends /tmp/velmora.deb >/dev/null 2>&1
as_ann "$diary | cmp - day && head -3 day" || fail "the diary differs"
echo "The trial passed."
