#!/usr/bin/env bash
# Installs the Debian packages that building, running and checking Velmora needs.
# For packages that are installed already it makes one query and uses no network.
set -euo pipefail

packages=(
    g++ cmake ninja-build         # the build
    qt6-base-dev libgl1-mesa-dev  # windows; Qt's CMake files need the GL headers
    libsqlite3-dev                # the volume
    fonts-dejavu-core             # a font for machines without any, and for the tour's pictures
)
if [ "${1:-}" = "--check" ]; then
    packages+=(clang-format clang-tidy libbenchmark-dev sqlite3)
fi

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
