#!/usr/bin/env bash
# check_package.sh FOLDER: tries what is shipped where it lies now: the desk plays a scenario, the small host is built
# with its own build file and runs, every page's links and pictures are there, nothing names the place of the build.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
tree=$(cd "$1" && pwd -P)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    echo "check_package.sh: $*" >&2
    exit 1
}

"$here/wine.sh" --timeout 120 --cwd "$work" "$tree/bin/EmendoHost.exe" --version || fail "no version"
"$here/wine.sh" --timeout 120 --cwd "$work" "$tree/bin/EmendoHost.exe" --lang 1033 \
    --scenario "$tree/bin/scenarios/order-move.scn" >"$work/played" || { cat "$work/played"; fail "the desk does not run"; }

cp -r "$tree/sdk" "$work/sdk"
"$work/sdk/small_host/build_mingw.sh" "$work/small_host.exe" || fail "the small host does not build"
"$here/wine.sh" --timeout 120 "$work/small_host.exe" "$tree/bin/EmendoOrd.dll" 1 >"$work/small" || {
    cat "$work/small"
    fail "the small host does not run"
}

for page in "$tree"/docs/*.html "$tree"/docs/decisions/*.html; do
    { grep -oE '(href|src)="[^"#:]+' "$page" || true; } | sed 's/.*"//' | sort -u | while read -r link; do
        [ -e "$(dirname "$page")/$link" ] || fail "$(basename "$page") leads to $link, which is not there"
    done
done

project=$(dirname "$here")
! grep -rlF "$project/" "$tree" || fail "these name the place of the build"
