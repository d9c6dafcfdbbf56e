#!/usr/bin/env bash
# Plays scenarios that cannot pass: each is to end with its line, its reason and a picture of the moment.
#   broken_scenarios.sh EMENDOHOST FOLDER
set -euo pipefail
host=$1
out=$2
root=$(cd "$(dirname "$0")/../.." && pwd)
rm -rf "$out"
mkdir -p "$out"

names=()
reasons=()
# scenario NAME REASON STEP...; the reason begins with the line.
scenario() {
    printf '%s\n' "${@:3}" >"$out/$1.scn"
    names+=("$1")
    reasons+=("$2")
}

scenario unknown-step "2: unknown step 'opne', expected one of open," '# a comment' 'opne order input'
scenario words-missing "1: expected: choose CONTROL TEXT" 'choose account'
scenario open-quotation "1: a quotation mark is not closed" 'expect title "Input'
scenario missing-control "2: the dialog has no control 'fill-source'" \
    'open order input' 'choose fill-source code:M'
scenario missing-line "2: control 'account' has no line '123456' among its 10" \
    'open order input' 'choose account 123456'
scenario disabled-control "2: control 'fill-price' is disabled" 'open order input' 'type fill-price 5'
scenario wrong-state "2: control 'order-qty' shows \"0\", expected \"7\"" \
    'open order input' 'expect order-qty enabled text 7'
scenario wrong-request "3: DeleteOrder: orderNo is 1001, expected 1002" \
    'open order remove on order 1001' 'click confirm' 'expect request DeleteOrder orderNo=1002'
scenario wrong-bytes "4: SendOrder: bytes at 157 are 05000000, expected 06000000" \
    'open order modify on order 1001' 'type order-price 2513' 'click confirm' \
    'expect request SendOrder bytes 157:06000000'
scenario unexpected-request "2: the scenario ends, and nothing expected the request DeleteOrder" \
    'open order remove on order 1001' 'click confirm'
scenario box-left-open "2: then a question was left open: \"Account can't be empty!" \
    'open order input' 'click confirm' 'wait idle'
scenario wrong-question "3: the question's text is \"The Order isn't Input,Are you sure to take this operation?\", expected \"The same user!\"" \
    'open order remove on order 1003' 'click confirm' 'answer ok string:10059'
scenario no-question "2: no question came" 'open order input' 'answer ok string:10012'
scenario unknown-order "1: the book has no order 4711" 'open order modify on order 4711'
scenario bad-fault "1: fault 'SendOrder sulk': no kind 'sulk'" 'fault SendOrder sulk'

status=0
"$root/scripts/wine.sh" --timeout 180 --cwd "$out" "$host" --scenario "${names[@]/%/.scn}" --lang 1033 --out . \
    >"$out/log" 2>&1 || status=$?
failures=0
[ "$status" = 1 ] || { echo "exit code $status, expected 1"; failures=1; }
for i in "${!names[@]}"; do
    name=${names[i]}
    if ! grep -qF "FAILED $name.scn:${reasons[i]}" "$out/log"; then
        echo "$name: expected \"${reasons[i]}\", found:"
        grep -F "FAILED $name.scn" "$out/log" || echo "  no failure"
        failures=1
    fi
    [ -s "$out/failed-$name-1033.bmp" ] || { echo "$name: no picture"; failures=1; }
done
exit "$failures"
