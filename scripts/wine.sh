#!/usr/bin/env bash
set -euo pipefail

usage() {
    cat <<'END'
usage: wine.sh [options] EXE [arguments]

Runs a 32-bit Windows program in Wine and returns its output and its exit code (the low 8 bits; an access violation
ends with 5). Runs at the same time do not see each other: each has a Wine server, desktop and clipboard of its own.

  --timeout SECONDS    end the program after this time, with exit code 124 (default 120)
  --locale LOCALE      C.UTF-8 (default), zh_CN.UTF-8, zh_TW.UTF-8, zh_HK.UTF-8, zh_SG.UTF-8, ja_JP.UTF-8
  --dpi DPI            resolution of the screen: 96 (default), 120, 144
  --display null       windows exist and take input messages, nothing is drawn, no X server (default)
  --display virtual    a virtual X display with a window manager: pictures, SendInput, xdotool
  --display own        the display of $DISPLAY
  --screenshot FILE    picture of the virtual display, taken while the program runs (implies --display virtual)
  --screenshot-at S    seconds after its first window appeared at which the picture is taken (default 1)
  --cwd DIRECTORY      working directory of the program (default: the caller's)
  --fresh              end the Wine server that an earlier run left waiting, and begin with a new one
  --help

Unix paths work as arguments (the current drive is Z:, which is /). Environment variables are passed on.
Prefixes are kept in build/wine; EMENDO_WINE_DIR names another place.
END
}

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
source "$here/wine_paths.sh"

limit=120
locale=C.UTF-8
dpi=96
display=null
screenshot=
screenshot_at=1
cwd=$PWD
fresh=
while [ $# -gt 0 ]; do
    case $1 in
        --timeout) limit=$2; shift 2 ;;
        --locale) locale=$2; shift 2 ;;
        --dpi) dpi=$2; shift 2 ;;
        --display) display=$2; shift 2 ;;
        --screenshot) screenshot=$2; display=virtual; shift 2 ;;
        --screenshot-at) screenshot_at=$2; shift 2 ;;
        --cwd) cwd=$2; shift 2 ;;
        --fresh) fresh=1; shift ;;
        --help) usage; exit 0 ;;
        --) shift; break ;;
        -*) echo "wine.sh: unknown option $1" >&2; usage >&2; exit 2 ;;
        *) break ;;
    esac
done
[ $# -gt 0 ] || { usage >&2; exit 2; }
case $display in
    null | virtual) ;;
    own) [ -n "${DISPLAY-}" ] || { echo "wine.sh: --display own, but DISPLAY is not set" >&2; exit 2; } ;;
    *) echo "wine.sh: unknown display $display" >&2; exit 2 ;;
esac
case $locale in
    C.UTF-8 | zh_CN.UTF-8 | zh_TW.UTF-8 | zh_HK.UTF-8 | zh_SG.UTF-8 | ja_JP.UTF-8) ;;
    *) echo "wine.sh: unknown locale $locale" >&2; exit 2 ;;
esac
case $dpi in
    96 | 120 | 144) ;;
    *) echo "wine.sh: unknown resolution $dpi" >&2; exit 2 ;;
esac
program=$1
shift
if [[ $program == */* ]]; then
    [ -r "$program" ] || { echo "wine.sh: no such program: $program" >&2; exit 127; }
    program=$(realpath -- "$program")
fi
[ -z "$screenshot" ] || screenshot=$(realpath -m -- "$screenshot")

if [ "$(wine_kind)" = none ] || ! wine_template_ready; then
    "$here/setup.sh" >&2
fi

# The processors that this run may use, one number a line.
processors() {
    local from to
    awk '/^Cpus_allowed_list:/ { print $2 }' /proc/self/status | tr ',' '\n' | while IFS=- read -r from to; do
        seq "$from" "${to:-$from}"
    done
}

take_lock() {
    exec {lock}>"$1"
    flock -n "$lock" && return
    exec {lock}>&-
    return 1
}

# A slot is a prefix that one run has for itself, with its server, which waits for the next run. A program and its server
# take turns, which goes several times quicker on one processor than across two that fall asleep in between: each
# processor has a slot, and runs beyond their number get slots of no processor.
slots=${EMENDO_WINE_DIR:-$(dirname "$here")/build/wine}
mkdir -p "$slots"
slots=$(cd "$slots" && pwd -P)
slot=
kind=$display-$locale
[ "$dpi" = 96 ] || kind=$kind-$dpi
for processor in $(processors); do
    if take_lock "$slots/processor-$processor"; then
        slot=$slots/$kind-$processor
        taskset -pc "$processor" $$ >/dev/null
        break
    fi
done
for ((number = 0; ${#slot} == 0; number++)); do
    mkdir -p "$slots/$kind-more$number"
    if take_lock "$slots/$kind-more$number/lock"; then
        slot=$slots/$kind-more$number
    fi
done
mkdir -p "$slot"

export WINEPREFIX=$slot/prefix WINEARCH=win32 WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="$wine_overrides${WINEDLLOVERRIDES:+;$WINEDLLOVERRIDES}"

end_server() {
    [ -d "$WINEPREFIX" ] || return 0
    timeout --kill-after=2 20 "$here/with_wine.sh" wineserver -k </dev/null >/dev/null 2>&1 {lock}>&- || true
}

make_prefix() {
    end_server
    rm -rf "$WINEPREFIX" "$WINEPREFIX.partial"
    cp -al "$wine_template" "$WINEPREFIX.partial" 2>/dev/null || {
        rm -rf "$WINEPREFIX.partial"
        cp -a --no-preserve=ownership "$wine_template" "$WINEPREFIX.partial"
    }
    local file
    for file in system.reg user.reg userdef.reg .update-timestamp; do
        cp --remove-destination "$wine_template/$file" "$WINEPREFIX.partial/$file"
    done
    # Wine's own is nearly that of the background; this is the usual one.
    sed -i 's/^"HotTrackingColor"=.*/"HotTrackingColor"="0 102 204"/' "$WINEPREFIX.partial/user.reg"
    if [ "$display" = null ]; then
        printf '\n[Software\\\\Wine\\\\Drivers]\n"Graphics"="null"\n' >>"$WINEPREFIX.partial/user.reg"
    fi
    printf '\n[Control Panel\\\\Desktop]\n"LogPixels"=dword:%08x\n' "$dpi" >>"$WINEPREFIX.partial/user.reg"
    mv "$WINEPREFIX.partial" "$WINEPREFIX"
}

if [ ! -r "$WINEPREFIX/.emendo-recipe" ] || ! cmp -s "$WINEPREFIX/.emendo-recipe" "$wine_template_stamp"; then
    make_prefix
elif [ -n "$fresh" ] || [ -e "$slot/running" ]; then
    end_server # the file is left when a run was killed before it could clear up
fi
: >"$slot/running"

# The display ends by itself a while after its last client, which is the desktop process of the waiting server.
start_display() {
    rm -f "$slot/display" "$slot/xvfb.pid"
    end_server
    setsid Xvfb -displayfd 3 -terminate 20 -screen 0 1280x1024x24 -nolisten tcp \
        3>"$slot/display" </dev/null >"$slot/xvfb.log" 2>&1 {lock}>&- &
    echo $! >"$slot/xvfb.pid"
    local tries
    for ((tries = 0; tries < 200; tries++)); do
        [ ! -s "$slot/display" ] || return 0
        sleep 0.05
    done
    echo "wine.sh: the virtual display did not start:" >&2
    cat "$slot/xvfb.log" >&2
    return 1
}

display_runs() {
    [ -s "$slot/display" ] && [ -s "$slot/xvfb.pid" ] &&
        [ "$(cat "/proc/$(<"$slot/xvfb.pid")/comm" 2>/dev/null)" = Xvfb ]
}

# Windows of a display without a window manager take 2 s to be destroyed.
start_window_manager() {
    local config=/etc/xdg/openbox/rc.xml tries
    openbox --sm-disable --config-file "$config" </dev/null >"$slot/openbox.log" 2>&1 {lock}>&- &
    window_manager=$!
    for ((tries = 0; tries < 100; tries++)); do
        if xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; then
            return 0
        fi
        kill -0 "$window_manager" 2>/dev/null || break
        sleep 0.02
    done
    return 1
}

take_picture() {
    until xprop -root _NET_CLIENT_LIST | grep -q 0x; do
        sleep 0.1
    done
    sleep "$screenshot_at"
    exec import -window root "$screenshot"
}

window_manager=
camera=
child=
clear_up() {
    local ended=$?
    trap - EXIT
    if [ -n "$child" ]; then
        kill -KILL "$child" || true
        wait "$child" || true
        end_server
    fi 2>/dev/null
    [ -z "$camera" ] || kill "$camera" 2>/dev/null || true
    [ -z "$window_manager" ] || kill "$window_manager" 2>/dev/null || true
    rm -f "$slot/running"
    exit "$ended"
}
trap clear_up EXIT
trap 'exit 143' TERM
trap 'exit 130' INT
trap 'exit 129' HUP

case $display in
    null) unset DISPLAY ;;
    virtual)
        display_runs || start_display
        DISPLAY=:$(<"$slot/display")
        export DISPLAY
        if ! start_window_manager; then
            start_display
            DISPLAY=:$(<"$slot/display")
            start_window_manager || { echo "wine.sh: the window manager did not start" >&2; exit 125; }
        fi
        ;;
esac

if [ -n "$screenshot" ]; then
    rm -f "$screenshot"
    take_picture {lock}>&- &
    camera=$!
fi

# The lock stays with `timeout`: a slot is busy as long as its program runs, even when this script was killed.
cd -- "$cwd"
began=$SECONDS
# A new server is given its service processes before the program starts: as children of the program they would keep
# its output open, and whoever reads that would wait for them.
start='wineserver -p30 >/dev/null 2>&1 && wine cmd /c exit </dev/null >/dev/null 2>&1; exec wine "$@"'
# shellcheck disable=SC2016
timeout --foreground --kill-after=2 "$limit" bash -c 'lock=$1; shift; exec {lock}>&-; exec "$@"' hold "$lock" \
    "$here/with_wine.sh" env LC_ALL="$locale" sh -c "$start" wine "$program" "$@" <&0 &
child=$!
ended=0
wait "$child" || ended=$?
if [ $((SECONDS - began)) -ge "$limit" ] && [[ $ended == 124 || $ended == 137 ]]; then
    echo "wine.sh: ended after its time limit of $limit s: $program" >&2
    exit 124
fi
child=
exit "$ended"
