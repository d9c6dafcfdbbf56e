#!/usr/bin/env bash
# Installs everything that building, testing and running needs, on a Debian machine, without questions.
# Quick when nothing is missing; may be run again, by several at once, and after having been interrupted.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
source "$here/wine_paths.sh"

packages=(
    cmake make
    g++-mingw-w64-i686-posix binutils-mingw-w64-i686        # Windows compiler and resource compiler
    g++-multilib                                            # native 32-bit build
    clang libclang-rt-14-dev                                # fuzz targets
    clang-format                                            # the rules of the house
    lld                                                     # with clang: terminals of the other compiler
    googletest nlohmann-json3-dev
    cmark-gfm zip unzip                                     # the package: pages, archive
    xvfb xauth openbox x11-utils xdotool imagemagick        # virtual display, window manager, pictures
    fonts-wqy-microhei locales
    debootstrap util-linux
)
languages=(zh_CN zh_TW zh_HK zh_SG ja_JP)

export DEBIAN_FRONTEND=noninteractive

missing_packages() {
    comm -23 <(printf '%s\n' "${packages[@]}" | sort -u) \
        <(dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' "${packages[@]}" 2>/dev/null |
            awk '$1 == "ii" { print $2 }' | sort -u)
}

need_root() {
    [ "$(id -u)" = 0 ] || { echo "setup.sh: run once as root to install: $*" >&2; exit 1; }
}

apt() {
    apt-get -o DPkg::Lock::Timeout=300 -y -q "$@" </dev/null 9>&-
}

install_packages() {
    local missing
    mapfile -t missing < <(missing_packages)
    [ ${#missing[@]} -gt 0 ] || return 0
    need_root "${missing[@]}"
    echo "installing ${missing[*]} ..."
    # Package lists may be absent or too old for the mirror.
    apt install --no-install-recommends "${missing[@]}" >"$log" 2>&1 ||
        { apt update && apt install --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 ||
        { tail -n 30 "$log" >&2; exit 1; }
}

# True when the `wine` on PATH really runs a 32-bit program.
wine_on_path_works() {
    command -v wine >/dev/null || return 1
    local trial works=1
    trial=$(mktemp -d)
    echo 'int main() { return 42; }' >"$trial/trial.c"
    i686-w64-mingw32-gcc-posix -o "$trial/trial.exe" "$trial/trial.c"
    mkdir "$trial/prefix"
    local status=0
    WINEPREFIX=$trial/prefix WINEARCH=win32 WINEDEBUG=-all WINEDLLOVERRIDES=$wine_overrides DISPLAY='' \
        timeout --kill-after=5 120 wine "$trial/trial.exe" </dev/null >"$log" 2>&1 9>&- || status=$?
    [ "$status" != 42 ] || works=0
    WINEPREFIX=$trial/prefix timeout 30 env PATH="$PATH:/usr/lib/wine" wineserver -k >/dev/null 2>&1 || true
    rm -rf "$trial"
    return "$works"
}

remember_wine_on_path() {
    wine_on_path_identity >"$wine_on_path_stamp.new"
    mv "$wine_on_path_stamp.new" "$wine_on_path_stamp"
    local language
    for language in "${languages[@]}"; do
        locale -a | grep -qix "$language.utf-\?8" || localedef -i "$language" -f UTF-8 "$language.UTF-8"
    done
}

# The three ways to a 32-bit Wine, the cheapest first.
install_wine() {
    [ "$(wine_kind)" = none ] || return 0
    if wine_on_path_works; then
        remember_wine_on_path
        return 0
    fi
    need_root "a 32-bit Wine"
    local added_i386=
    if ! dpkg --print-foreign-architectures | grep -qx i386; then
        dpkg --add-architecture i386
        added_i386=1
    fi
    if apt update >"$log" 2>&1 && apt install -s wine32:i386 wine >>"$log" 2>&1; then
        echo "installing Wine from the i386 packages ..."
        if apt install wine32:i386 wine >>"$log" 2>&1 && wine_on_path_works; then
            remember_wine_on_path
            return 0
        fi
    fi
    # Left in place, an unusable second architecture would slow down and confuse every later installation.
    if [ -n "$added_i386" ] && ! dpkg -l | awk '$1 == "ii"' | grep -q ':i386 '; then
        dpkg --remove-architecture i386
        apt update >"$log" 2>&1 || true
    fi
    "$here/make_wine_root.sh" 9>&-
}

# The usual case, checked without the lock: everything is there.
if [ -z "$(missing_packages)" ] && [ "$(wine_kind)" != none ] && wine_template_ready; then
    exit 0
fi

mkdir -p "$EMENDO_CACHE/mnt"
log=$EMENDO_CACHE/setup.log
exec 9>"$EMENDO_CACHE/setup.lock"
flock 9
install_packages
install_wine
"$here/make_wine_prefix.sh" 9>&-
