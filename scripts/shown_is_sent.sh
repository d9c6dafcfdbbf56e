#!/usr/bin/env bash
# What is shown is what is sent, for long: shown_is_sent.sh [ENTRIES] [SEED], 20,000 entries in each language from
# seed 1 by default. Builds what it runs. EMENDO_LANGUAGES="2052 1033" names other languages, EMENDO_FAILURES how many
# differences end a language (default 10). Entry N of seed S comes alone with `shown_is_sent.sh 1 S+N`.
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
entries=${1:-20000}
seed=${2:-1}
chunk=2000 # in a process

mkdir -p build/windows
cmake --preset windows >/dev/null
cmake --build build/windows --target shown_is_sent_test >/dev/null
status=0
for language in ${EMENDO_LANGUAGES:-1033 2052 1028}; do
    case $language in
        2052) locale=zh_CN.UTF-8 ;;
        1028) locale=zh_TW.UTF-8 ;;
        *) locale=C.UTF-8 ;;
    esac
    for ((done = 0; done < entries; done += chunk)); do
        count=$((entries - done < chunk ? entries - done : chunk))
        echo "== language $language, seeds $((seed + done)) to $((seed + done + count - 1))"
        EMENDO_LANGUAGE=$language EMENDO_ENTRIES=$count EMENDO_SEED=$((seed + done)) \
            EMENDO_FAILURES=${EMENDO_FAILURES:-10} nice scripts/wine.sh --timeout $((count * 3 + 300)) \
            --locale "$locale" build/windows/bin/shown_is_sent_test.exe |
            grep -vE '^\[|^$|^Running main|^Note:' || status=1
        [ "${PIPESTATUS[0]}" -eq 0 ] || status=1
    done
done
exit $status
