#!/usr/bin/env bash
# Installs the Debian 12 packages the project builds and tests with, when any
# is missing. Quiet and fast when everything is already there.
#   install-deps.sh checks   also the format, clang-tidy and fuzzing tools
set -euo pipefail

packages=(
    cmake ninja-build g++ pkg-config
    qt6-base-dev qt6-base-dev-tools qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
    qt6-qpa-plugins libgl-dev fonts-dejavu-core fonts-wqy-microhei
    dbus-daemon libqt6sql6-sqlite iproute2
    dpkg-dev desktop-file-utils
    python3-prometheus-client xvfb xauth
)
if [ "${1:-}" = "checks" ]; then
    packages+=(clang clang-format clang-tidy libclang-rt-14-dev)
fi

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing missing packages: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Need root (or sudo) to install: ${missing[*]}" >&2; exit 1; }
    sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -q
$sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
