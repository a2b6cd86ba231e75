#!/usr/bin/env bash
# Configures and builds the project. Usage: scripts/build.sh [BUILD_DIR] [extra cmake args...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build}
shift || true
"$root/scripts/setup.sh"
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
elif [ $# -gt 0 ]; then
    cmake "$build" "$@" >/dev/null
fi
cmake --build "$build" -j"$(nproc)"
