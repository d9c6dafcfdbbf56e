#!/usr/bin/env bash
# with_wine.sh COMMAND ARGS...: runs a command where `wine` and `wineserver` are those of the 32-bit Wine in use.
# With the i386 root that is a private mount namespace: the root's system folders, and this machine's other folders at
# their own paths, so that the project, the working directory, /tmp and the X socket are found where they always are.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
source "$here/wine_paths.sh"

if [ "${1-}" != --inside ]; then
    case $(wine_kind) in
        path) PATH=$PATH:/usr/lib/wine exec "$@" ;;
        none) echo "no 32-bit Wine yet: run scripts/setup.sh" >&2; exit 125 ;;
    esac
    flags=(--mount --propagation unchanged)
    [ "$(id -u)" = 0 ] || flags+=(--map-root-user)
    exec unshare "${flags[@]}" "$here/with_wine.sh" --inside "$@"
fi
shift

# Fails in a chroot whose top is no mount point; such a machine shares no mounts either.
mount --make-rprivate / 2>/dev/null || true
top=$EMENDO_CACHE/mnt
mount -t tmpfs -o mode=755 emendo-wine "$top"
for entry in "$wine_root"/*; do
    [ ! -L "$entry" ] || cp -P "$entry" "$top/"
done
from_root=" usr etc var "
for name in $from_root; do
    mkdir "$top/$name"
    mount --bind "$wine_root/$name" "$top/$name"
done
mkdir "$top/run"
for entry in /*; do
    name=${entry#/}
    if [ -e "$top/$name" ] || [ -L "$top/$name" ]; then
        continue
    fi
    if [ -L "$entry" ]; then
        cp -P "$entry" "$top/"
    elif [ -d "$entry" ] && [ "$name" != boot ] && [ "$name" != lost+found ]; then
        mkdir "$top/$name"
        mount --rbind "$entry" "$top/$name"
    fi
done
# A project, prefix or working directory below one of the root's own folders is laid over it.
for directory in "$(dirname "$here")" "$(dirname "${WINEPREFIX:-$HOME/.wine}")" "$PWD"; do
    name=${directory#/}
    name=${name%%/*}
    if [[ $from_root == *" $name "* || $name == run ]]; then
        mkdir -p "$top$directory"
        mount --bind "$directory" "$top$directory"
    fi
done

if [ -z "${TZ-}" ] && [ -r /etc/timezone ]; then
    TZ=$(</etc/timezone)
    export TZ
fi
exec chroot "$top" env --chdir="$PWD" PATH=/usr/lib/wine:/usr/bin:/bin WINESERVER=/usr/lib/wine/wineserver32 "$@"
