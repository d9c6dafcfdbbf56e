#!/usr/bin/env bash
# random_operator.sh TEST COUNTER NUMBER SEED CHUNK: plays plans with so many of what the test counts in each language, a
# chunk of it in a process. Called by shown_is_sent.sh and monkey.sh. Builds what it runs; exit code 1 when anything
# failed. EMENDO_LANGUAGES="1033" names other languages than the three, EMENDO_FAILURES how many faults end a process (10).
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
test=$1 counter=$2 number=$3 seed=$4 chunk=$5

mkdir -p build/windows
cmake --preset windows >/dev/null
cmake --build build/windows --target "$test" >/dev/null
status=0
for language in ${EMENDO_LANGUAGES:-1033 2052 1028}; do
    case $language in
        2052) locale=zh_CN.UTF-8 ;;
        1028) locale=zh_TW.UTF-8 ;;
        *) locale=C.UTF-8 ;;
    esac
    # A plan holds several of what is counted, so that no chunk comes to the seeds of the next.
    for ((done = 0; done < number; done += chunk)); do
        count=$((number - done < chunk ? number - done : chunk))
        first=$((seed + done))
        echo "== language $language, $count from seed $first"
        env EMENDO_LANGUAGE="$language" "$counter=$count" EMENDO_SEED=$first \
            EMENDO_FAILURES="${EMENDO_FAILURES:-10}" nice scripts/wine.sh --timeout $((count + 600)) \
            --locale "$locale" "build/windows/bin/$test.exe" 2>&1 | grep -vE '^\[|^$|^Running main' || status=1
    done
done
exit $status
