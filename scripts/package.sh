#!/usr/bin/env bash
# Installs what is missing, builds, and packs everything that is shipped into out/emendo-VERSION-win32.zip.
#   scripts/package.sh            builds and packs
#   scripts/package.sh --check    unpacks it elsewhere afterwards and tries what is in it
# The same source gives the same bytes: entries are sorted and carry the commit's time.
set -euo pipefail
cd "$(dirname "$(dirname "$(realpath "${BASH_SOURCE[0]}")")")"
source scripts/wine_paths.sh

scripts/setup.sh
# A build of its own: with line tables, which slow every link down.
build=build/package
mkdir -p "$build" out
log=$build/package.log
echo "building ..."
if ! { cmake --preset windows -B "$build" -DEMENDO_LINE_TABLES=ON &&
    cmake --build "$build" -j "${EMENDO_JOBS:-$(nproc)}" --target shipped; } >"$log" 2>&1; then
    tail -n 40 "$log"
    echo "package.sh: the build failed, see $log" >&2
    exit 1
fi
version=$(sed -n 's/^#define EMENDO_VERSION "\(.*\)"/\1/p' "$build"/generated/emendo_build.h)
name=emendo-$version-win32
tree=out/$name
rm -rf "$tree" "$tree.zip"
cmake --install "$build" --prefix "$tree" >>"$log"

(cd "$tree" && find . -type f ! -name SHA256SUMS -printf '%P\n' | LC_ALL=C sort | xargs -d '\n' sha256sum) >"$tree.sums"
mv "$tree.sums" "$tree/SHA256SUMS"
# A zip file knows no time before 1980.
time=$(git log -1 --format=%ct 2>/dev/null || echo 315532800)
find "$tree" -type d -exec chmod 755 {} +
find "$tree" -type f -exec chmod 644 {} +
find "$tree" -type f -name '*.sh' -exec chmod 755 {} +
find "$tree" -exec env TZ=UTC touch -d "@$time" {} +
(cd out && find "$name" -type f | LC_ALL=C sort | TZ=UTC zip -q -X -D -@ "$name.zip")
(cd out && sha256sum "$name.zip")
rm -rf "$tree"

if [ "${1-}" = --check ]; then
    place=$(mktemp -d)
    trap 'rm -rf "$place"' EXIT
    unzip -q "out/$name.zip" -d "$place"
    (cd "$place/$name" && sha256sum --quiet -c SHA256SUMS)
    scripts/check_package.sh "$place/$name"
fi
