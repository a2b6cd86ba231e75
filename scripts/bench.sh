#!/usr/bin/env bash
# Builds the benchmarks (optimised, in build-bench) and runs them. Each prints
# Google Benchmark's table, then its ratios against raw SQLite doing the same work
# on the same file. Usage: scripts/bench.sh [dao|status|poll|board...] (default: all).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build-bench
"$root/scripts/setup.sh"
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
fi
names=("$@")
[ ${#names[@]} -gt 0 ] || names=(dao status poll board)
targets=()
for n in "${names[@]}"; do targets+=("bench_$n"); done
cmake --build "$build" -j"$(nproc)" --target "${targets[@]}"
for t in "${targets[@]}"; do
    echo "== $t"
    "$build/bench/$t"
done
