#!/usr/bin/env bash
# Builds the engine benchmark (optimised, in build-bench) and runs it. It prints
# Google Benchmark's table, then the ratios engine/raw SQLite for the two pieces
# of work; the goal is 1.5 or less. Extra arguments go to the benchmark binary.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build-bench
"$root/scripts/setup.sh"
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
fi
cmake --build "$build" -j"$(nproc)" --target bench_dao
exec "$build/bench/bench_dao" "$@"
