#!/usr/bin/env bash
# Builds the benchmarks (optimised, in build-bench) and runs them. Each prints
# Google Benchmark's table, then its ratios against raw SQLite doing the same work
# on the same file, the raw side keeping its prepared statements as the engine does.
# Usage: scripts/bench.sh [dao|status|poll|board|messages|side...] (default: all).
# Goals: dao 1.5 (10,000 people, a look-up by LIKE included); status 1.5 (one
# status change at 10,000 people); side 1.5 (the stress test's burst, 2,000
# status writes); poll 3 with the file open, 2 with a real open and close; board
# and messages in absolute times (see README.md).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build-bench
"$root/scripts/setup.sh"
if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
fi
names=("$@")
[ ${#names[@]} -gt 0 ] || names=(dao status poll board messages side)
targets=()
for n in "${names[@]}"; do targets+=("bench_$n"); done
cmake --build "$build" -j"$(nproc)" --target "${targets[@]}"
for t in "${targets[@]}"; do
    echo "== $t"
    "$build/bench/$t"
done
