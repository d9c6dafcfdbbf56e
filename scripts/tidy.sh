#!/usr/bin/env bash
# tidy.sh [--deep]: the rules of the house that no compiler knows. Names each finding and what to do about it.
#   --deep   clang-tidy over the window-free code as well; takes minutes
set -eu
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
findings=$(mktemp)
trap 'rm -f "$findings"' EXIT
finding() { # RULE, then findings on standard input
    local lines
    lines=$(cat)
    [ -z "$lines" ] || printf '%s\n%s\n' "$1:" "$(sed 's/^/    /' <<<"$lines")" | tee -a "$findings"
}
sources() { find "$@" \( -name '*.cpp' -o -name '*.h' \) | sort; }
# Every include of another file of the house, as "file included".
includes() {
    sources src host | xargs grep -HoE '^#include "[^"]+"' | sed -E 's|:#include "(.*)"|  \1|'
}

if ! command -v clang-format >/dev/null; then
    DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 -y -q install clang-format </dev/null >/dev/null
fi
sources src host tests bench fuzz tools sdk probe 2>/dev/null | xargs -n 40 clang-format --dry-run 2>&1 |
    sed -nE 's|^([^:]+):([0-9]+):.*warning.*|\1:\2|p' | sort -u |
    finding "not formatted: run scripts/format.sh"

# A floor includes what stands below it; the two dialogs do not know each other.
includes | awk '
    BEGIN { split("framework res trade entry controls order fill frame", names)
            rank["framework"] = 1; rank["res"] = 2; rank["trade"] = 3; rank["entry"] = 4
            rank["controls"] = 5; rank["order"] = rank["fill"] = 6; rank["frame"] = 7 }
    $1 ~ /^src\// { split($1, from, "/"); split($2, to, "/")
        if (rank[to[1]] > rank[from[2]] || (rank[to[1]] == rank[from[2]] && to[1] != from[2])) print $1 " includes " $2 }
    $1 ~ /^host\// { split($2, to, "/")
        if (to[1] ~ /^(entry|controls|order|fill|frame|res)$/) print $1 " includes " $2 }' |
    finding "includes a higher floor, or the terminal a rule of the module: move what is shared down, or keep a copy on purpose"

# A module is a header and its source; A -> B -> A is one module in two files.
includes | awk '
    function stem(path) { sub(/^(src|host)\//, "", path); sub(/\.(cpp|h)$/, "", path); return path }
    stem($1) != stem($2) { print stem($1), stem($2) }' | sort -u | tsort 2>&1 >/dev/null |
    sed -n 's/^tsort: //p' | grep -v 'contains a loop' |
    finding "modules include each other in a circle: give what both need a file of its own"

# Windows is known to the framework, the frame, the dialogs' windows, and to these.
sources src | grep -vE '^src/(framework|frame)/' | xargs grep -lE '^#include <(windows|commctrl|uxtheme)\.h>' | grep -vxF \
"src/controls/dialog_template.h
src/controls/message_box.h
src/controls/message_box_layout.h
src/entry/time_zone_windows.cpp
src/controls/window_placement.h
src/order/carry_check_box.cpp
src/order/carry_check_box.h
src/order/message_pause.cpp
src/res/resource_loader.h
src/res/system_language.cpp
src/trade/window_handle.h" |
    finding "includes Windows headers and is not listed in this script: keep logic free of windows"

sources src | xargs grep -nE 'std::regex|dynamic_cast|using namespace std;' |
    finding "has no place in the module: regular expressions double its size, the other side of the border has no type information" || true

find . -name '*.md' -not -path './build/*' -not -path './out/*' -not -path './.git/*' | sort |
    LC_ALL=C.UTF-8 xargs grep -nE '^.{111,}' | grep -vE '^[^:]+:[0-9]+:(\||    |!\[|\[)' | cut -d: -f1,2 |
    finding "longer than 110 columns: wrap the line"

if [ "${1-}" = --deep ]; then
    cmake --preset native -DCMAKE_EXPORT_COMPILE_COMMANDS=ON >/dev/null
    awk -F'"' '/"file"/ && $4 ~ /\/src\// { print $4 }' build/native/compile_commands.json | sort -u |
        xargs -P 2 -n 4 clang-tidy -p build/native --quiet --extra-arg=-Wno-unknown-warning-option 2>/dev/null |
        grep -E 'warning:|error:' | sort -u |
        finding "clang-tidy"
fi
[ ! -s "$findings" ] || exit 1
echo "the house is tidy"
