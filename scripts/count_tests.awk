# Counts single tests in ctest's log: prints the test programs seen and the tests passed, failed and
# skipped.
# A GoogleTest program counts with its own numbers, another program as one test. One that fails without naming
# a failed test (a crash, its time limit) adds one failure.
function finish() {
    if (!open) return
    programs++
    if (!ok && bad == 0) bad = 1
    if (ok && good == 0 && bad == 0 && !counted) good = 1
    passed += good
    failed += bad
    open = 0
}
{ sub(/\r$/, "") }
/^[0-9]+\/[0-9]+ Testing: / { finish(); open = 1; ok = 0; good = 0; bad = 0; counted = 0 }
/^\[  PASSED  \] [0-9]+ tests?\.$/ { good = $4; counted = 1 }
/^\[  FAILED  \] [0-9]+ tests?, listed below:$/ { bad = $4; counted = 1 }
/^\[  SKIPPED \] [0-9]+ tests?, listed below:$/ { skipped += $4; counted = 1 }
/^Test Passed\.$/ { ok = 1 }
END { finish(); print programs + 0, passed + 0, failed + 0, skipped + 0 }
