#!/usr/bin/env bash
# What is shown is what is sent, for long: shown_is_sent.sh [ENTRIES] [SEED], 20,000 entries in each language from seed 1
# by default, each confirmed. The plan of a difference comes again with EMENDO_PLAN=ITS_SEED shown_is_sent.sh 1;
# EMENDO_TRACE=1 tells its steps. For EMENDO_LANGUAGES and EMENDO_FAILURES see random_operator.sh.
exec "$(dirname "$0")/random_operator.sh" shown_is_sent_test EMENDO_ENTRIES "${1:-20000}" "${2:-1}" 4000
