#!/usr/bin/env bash
# Installs the Debian 12 packages the project needs, only those that are missing.
# Quiet when everything is already there; safe to run again and again.
set -euo pipefail

packages=(
    build-essential cmake ninja-build ccache pkg-config clang-format
    qt6-base-dev qt6-base-dev-tools qt6-multimedia-dev libqt6svg6
    libgl-dev libglx-dev libvulkan-dev
    libsqlite3-dev sqlite3
    libbenchmark-dev
    clang libclang-rt-14-dev
    xvfb xauth dbus-daemon dbus-bin desktop-file-utils
    fonts-dejavu-core
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "Installing: ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
