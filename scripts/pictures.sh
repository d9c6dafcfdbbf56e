#!/usr/bin/env bash
# Makes the pictures of the documentation: plays the scenarios that take one in the three languages on a virtual
# display and puts the results into docs/pictures.
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."

# The sample book has Chinese names, which English pictures are to show too: a Chinese code page has both.
locale_for_pictures() {
    case $1 in
        1028) echo zh_TW.UTF-8 ;;
        *) echo zh_CN.UTF-8 ;;
    esac
}
languages=(1033 2052 1028)
limit=61440 # bytes of a picture

scripts/setup.sh
cmake --preset windows >/dev/null
cmake --build build/windows -j "${EMENDO_JOBS:-$(nproc)}" --target EmendoOrd EmendoHost >/dev/null
mapfile -t scenarios < <(grep -l '^screenshot ' host/scenarios/*.scn)
wanted=$(sed -n 's/^screenshot //p' "${scenarios[@]}")

shots=$(mktemp -d)
trap 'rm -rf "$shots"' EXIT
mkdir -p docs/pictures
for language in "${languages[@]}"; do
    scripts/wine.sh --timeout 300 --display virtual --locale "$(locale_for_pictures "$language")" \
        build/windows/bin/EmendoHost.exe --scenario "${scenarios[@]}" --lang "$language" --out "$shots" \
        </dev/null >"$shots/log" || { grep -A 2 '^FAILED' "$shots/log" >&2; exit 1; }
    for name in $wanted; do
        picture=docs/pictures/$name-$language.png
        convert "$shots/$name-$language.bmp" -strip +dither -colors 48 PNG8:"$picture"
        [ "$(stat -c %s "$picture")" -le "$limit" ] || { echo "pictures.sh: $picture is too big" >&2; exit 1; }
        echo "$picture"
    done
done
