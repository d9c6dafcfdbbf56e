#!/usr/bin/env bash
# What ./run says before it builds anything: the usage at once, and what is wrong with a command line.
#   run_options.sh RUN
set -euo pipefail
run=$(realpath "$1")
cd "$(mktemp -d)"
failures=0
# expect STATUS TEXT ARGUMENT...
expect() {
    local status=0 said
    said=$("$run" "${@:3}" 2>&1 </dev/null) || status=$?
    if [ "$status" != "$1" ] || [[ $said != *"$2"* ]]; then
        printf '%s: exit code %s, expected %s and "%s":\n%s\n' "${*:3}" "$status" "$1" "$2" "$said"
        failures=1
    fi
}
expect 0 'usage: ./run' --help
expect 2 'unknown option --demp' --demp
expect 2 'no such language: 7' --lang 7
expect 2 '--book needs a value' --book
expect 2 "$PWD/missing.scn cannot be read" --scenario missing.scn
# Every option that is read is explained.
for option in $(grep -oE '^ +(--[a-z-]+( \| --[a-z-]+)*)\)' "$run" | grep -oE -- '--[a-z-]+'); do
    expect 0 "$option" --help
done
exit "$failures"
