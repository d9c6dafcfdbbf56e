#!/usr/bin/env bash
# What is shown is what is sent, for long: shown_is_sent.sh [ENTRIES] [SEED], 20,000 entries in each language from
# seed 1 by default. One entry alone: shown_is_sent.sh 1 SEED; EMENDO_TRACE=1 tells its steps.
# EMENDO_LANGUAGES="1033" names other languages than the three, EMENDO_FAILURES how many differences end a run (10).
exec "$(dirname "$0")/random_operator.sh" shown_is_sent_test EMENDO_ENTRIES "${1:-20000}" "${2:-1}" 1000
