#!/usr/bin/env bash
# Whatever is done with the dialogs does no harm, for long: monkey.sh [ACTIONS] [SEED], 100,000 actions over the three
# languages by default, in plans that are each played twice. A plan comes again as in shown_is_sent.sh.
languages=${EMENDO_LANGUAGES:-1033 2052 1028}
exec "$(dirname "$0")/random_operator.sh" monkey_test EMENDO_ACTIONS \
    $((${1:-100000} / $(wc -w <<<"$languages") + 1)) "${2:-1}" 10000
