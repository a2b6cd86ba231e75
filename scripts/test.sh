#!/usr/bin/env bash
# Builds everything and runs the whole test suite headless with CTest.
# With VESKOR_SANITIZE=1 (or argument --sanitize) the suite runs under
# AddressSanitizer + UndefinedBehaviorSanitizer in a build of its own.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
export QT_QPA_PLATFORM=offscreen
# No folder may include one of a layer above it.
"$root/scripts/layers.sh"
if [ "${1:-}" = "--sanitize" ] || [ "${VESKOR_SANITIZE:-0}" = "1" ]; then
    build=$root/build-asan
    "$root/scripts/build.sh" "$build" -DCMAKE_BUILD_TYPE=Debug -DVESKOR_SANITIZE=ON -DVESKOR_BENCH=OFF
    export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    export LSAN_OPTIONS=suppressions=$root/scripts/lsan.supp
else
    build=$root/build
    "$root/scripts/build.sh" "$build"
fi
cd "$build"
ctest --output-on-failure -j"$(nproc)"
