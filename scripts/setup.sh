#!/usr/bin/env bash
# Installs the Debian packages that building and running Velmora needs.
#   scripts/setup.sh [--check]      also those of ./check
#   scripts/setup.sh [--package]    also those of ./package
#   scripts/setup.sh [--trial]      also those of scripts/install_trial.sh
#   scripts/setup.sh [--accessibility]    also those of scripts/accessibility.py
# For packages that are installed already it makes one query and uses no network.
set -euo pipefail

packages=(
    g++ cmake ninja-build         # the build
    qt6-base-dev libgl1-mesa-dev  # windows; Qt's CMake files need the GL headers
    libsqlite3-dev                # the volume
    fonts-dejavu-core             # a font for machines without any, and for the tour's pictures
)
case "${1:-}" in
    --check) packages+=(clang-format clang-tidy libbenchmark-dev sqlite3) ;;
    --package)
        packages+=(
            dpkg-dev file                                # the package
            appstream desktop-file-utils lintian man-db  # its checks
        )
        ;;
    --trial) packages+=(debootstrap) ;;
    --accessibility)
        packages+=(
            xvfb openbox xdotool              # a display with windows and keys
            dbus-daemon at-spi2-core          # what a screen reader listens to
            gir1.2-atspi-2.0 python3-gi       # the client
        )
        ;;
esac

missing=()
for package in "${packages[@]}"; do
    state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "Installing: ${missing[*]}" >&2
"${as_root[@]}" apt-get update -qq >&2
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" >&2
