#!/usr/bin/env bash
# Whatever is done with the dialogs does no harm, for long: monkey.sh [ACTIONS] [SEED], 100,000 actions over the
# three languages by default, in plans of some 25 actions, each played twice. EMENDO_LANGUAGES and EMENDO_FAILURES
# as in shown_is_sent.sh.
languages=${EMENDO_LANGUAGES:-1033 2052 1028}
exec "$(dirname "$0")/random_operator.sh" monkey_test EMENDO_PLANS \
    $((${1:-100000} / $(wc -w <<<"$languages") / 50 + 1)) "${2:-1}" 200
