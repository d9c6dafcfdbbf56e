#!/usr/bin/env bash
# Makes the i386 Debian root that holds Wine, for machines where i386 packages cannot be installed beside the others.
# The root is built in a directory beside its place and renamed when complete, so an interrupted run leaves nothing
# that looks finished, and the next run starts over.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/wine_paths.sh"

# What debootstrap would leave out as merely recommended, but windows need: X extensions, and Wine's own fonts,
# whose metrics decide how large a dialog is.
packages=wine32,wine,libwine,locales,fonts-wine,fonts-liberation,fonts-wqy-zenhei
packages+=,libxcomposite1,libxcursor1,libxfixes3,libxi6,libxinerama1,libxrandr2,libxrender1,libgnutls30
languages=(zh_CN zh_TW zh_HK zh_SG ja_JP)

mkdir -p "$EMENDO_CACHE"
exec 9>"$EMENDO_CACHE/wine-root.lock"
flock 9
[ "$(wine_kind)" = none ] || exit 0

# The release and the mirror are those that this machine itself installs from.
release=$(. /etc/os-release && echo "$VERSION_CODENAME")
mirror=$(apt-get indextargets --format '$(CODENAME) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' |
    awk -v release="$release" '$1 == release && $2 == "main" { print $3; exit }')
[ -n "$mirror" ] || { echo "no package mirror for $release in this machine's apt configuration" >&2; exit 1; }
proxy=$(apt-config dump --format '%v%n' Acquire::http::Proxy)
[ -z "$proxy" ] || export http_proxy=$proxy

rm -rf "$EMENDO_CACHE"/wine-i386.partial.*
partial=$EMENDO_CACHE/wine-i386.partial.$$
log=$EMENDO_CACHE/wine-root.log
echo "making the i386 root with Wine (one or two minutes, log in $log) ..."
# What debootstrap mounts goes away with it, and it keeps the lock: both matter when this script alone is killed.
# shellcheck disable=SC2016
if ! unshare --mount --propagation unchanged sh -c 'mount --make-rprivate / 2>/dev/null; exec "$@"' root \
    debootstrap --arch=i386 --variant=minbase --include="$packages" "$release" "$partial" "$mirror" \
    >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    echo "debootstrap failed" >&2
    exit 1
fi
for language in "${languages[@]}"; do
    chroot "$partial" localedef -i "$language" -f UTF-8 "$language.UTF-8"
done
rm -rf "$partial"/var/cache/apt/archives/*.deb "$partial"/var/lib/apt/lists/*
echo "$wine_root_recipe" >"$partial/.emendo-recipe"

rm -rf "$wine_root"
mv "$partial" "$wine_root"
