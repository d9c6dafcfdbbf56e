#!/usr/bin/env bash
# reproducible.sh: builds the package twice from the last commit, in two folders whose paths differ in length, one after
# the other and without a compiler cache, and compares the archives byte by byte. Prints their hashes.
set -euo pipefail
cd "$(dirname "$(dirname "$(realpath "${BASH_SOURCE[0]}")")")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export CCACHE_DISABLE=1
unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER

commit=$(git rev-parse HEAD)
for folder in "$work/one" "$work/another/one/further/down"; do
    git clone --quiet --no-local --no-checkout . "$folder"
    git -C "$folder" checkout --quiet "$commit"
    "$folder/scripts/package.sh"
done
first=("$work"/one/out/*.zip)
second=("$work"/another/one/further/down/out/*.zip)
if ! cmp "${first[0]}" "${second[0]}"; then
    mkdir "$work/a" "$work/b"
    unzip -q "${first[0]}" -d "$work/a"
    unzip -q "${second[0]}" -d "$work/b"
    diff -rq "$work/a" "$work/b" || true
    echo "reproducible.sh: the two packages differ" >&2
    exit 1
fi
unzip -p "${first[0]}" '*/bin/EmendoOrd.dll' | sha256sum | sed 's/-$/EmendoOrd.dll/'
echo "the two packages are equal"
