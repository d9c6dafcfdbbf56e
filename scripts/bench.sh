#!/usr/bin/env bash
# Builds and runs the benchmarks, natively and in Wine, pinned to one processor, which keeps the figures steady.
# The exit code is 0 only when every limit was kept.
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
jobs=${EMENDO_JOBS:-$(nproc)}
status=0

cmake --preset native -B build/bench -DCMAKE_BUILD_TYPE=Release -DEMENDO_SANITIZERS= -DEMENDO_BENCH=ON >/dev/null
cmake --build build/bench --target benchmarks -j "$jobs" >/dev/null
cmake --preset windows >/dev/null
cmake --build build/windows --target benchmarks -j "$jobs" >/dev/null

echo "== native"
taskset -c 0 build/bench/bench/vocabulary_bench || status=1
echo "== Wine"
for program in build/windows/bin/*_bench.exe; do
    echo "-- $(basename "$program")"
    taskset -c 0 scripts/wine.sh --locale zh_CN.UTF-8 "$program" || status=1
done
exit $status
