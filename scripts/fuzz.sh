#!/usr/bin/env bash
# Runs the fuzz targets for long: fuzz.sh [RUNS] [TARGET...], ten million runs of every target by default.
# Stops at the first finding, whose input stays in build/native/fuzz. Corpora grow there from run to run.
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
runs=${1:-10000000}
shift $(($# > 0 ? 1 : 0))
[ $# -gt 0 ] || set -- contract_text date_text number_text price_row records

cmake --preset native >/dev/null
for target; do
    cmake --build build/native --target "fuzz_$target" >/dev/null
    echo "== $target, $runs runs"
    log=build/native/fuzz/$target.log
    if ! nice "build/native/fuzz/fuzz_$target" -runs="$runs" -max_len=4096 \
        -artifact_prefix="build/native/fuzz/${target}_" "build/native/fuzz/corpus_$target" "fuzz/seeds/$target" \
        >"$log" 2>&1; then
        tail -n 40 "$log"
        exit 1
    fi
    grep '^Done' "$log"
done
