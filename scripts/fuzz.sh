#!/usr/bin/env bash
# Fuzzes the Jet SQL translation, Jet's LIKE and the quoting helper with
# libFuzzer for a while. Usage: scripts/fuzz.sh [seconds] (default 60).
# Builds in build-fuzz with clang; exits non-zero when the fuzzer finds a crash,
# leaving the crashing input in build-fuzz/findings.
set -euo pipefail
seconds=${1:-60}
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build-fuzz

CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DVESKOR_FUZZ=ON -DVESKOR_BENCH=OFF >/dev/null
cmake --build "$build" --target fuzz_jetsql

corpus=$build/fuzz-corpus
findings=$build/findings
mkdir -p "$corpus" "$findings"
export ASAN_OPTIONS=abort_on_error=1:detect_leaks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
"$build/fuzz/fuzz_jetsql" -max_total_time="$seconds" -max_len=2048 -timeout=10 -print_final_stats=1 \
    -dict="$root/fuzz/jetsql.dict" -artifact_prefix="$findings/" "$corpus" "$root/fuzz/seeds"
