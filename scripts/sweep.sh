#!/usr/bin/env bash
# Lets each single thing around the module fail, in every dialog and mode: sweep.sh [SHARE], one case in SHARE (default 1:
# all of them, some hours), for the shipped module and the one with the guard heap side by side. Builds what it runs. A
# single case comes again with `sweep.exe MODULE --case KEY`.
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
share=${1:-1}

mkdir -p build/windows
cmake --preset windows >/dev/null
cmake --build build/windows --target sweep >/dev/null
bin=build/windows/bin
sweep() {
    nice scripts/wine.sh --timeout 86400 "$bin/sweep.exe" "$1" --share "$share"
}
status=0
sweep "$bin/guarded/EmendoOrd.dll" >build/sweep_guarded.log 2>&1 &
guarded=$!
echo "== the shipped module"
sweep "$bin/EmendoOrd.dll" || status=1
wait "$guarded" || status=1
echo "== the module with the guard heap"
cat build/sweep_guarded.log
exit $status
