#!/usr/bin/env bash
# Makes the finished prefix that every other prefix is copied from, once per machine: Wine needs some 15 s for one.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
source "$here/wine_paths.sh"

exec 9>"$EMENDO_CACHE/wine-prefix.lock"
flock 9
if wine_template_ready; then
    exit 0
fi

echo "making the Wine prefix (some 15 s) ..."
rm -rf "$EMENDO_CACHE"/wine-prefix.partial.*
partial=$EMENDO_CACHE/wine-prefix.partial.$$
log=$EMENDO_CACHE/wine-prefix.log
export WINEPREFIX=$partial WINEARCH=win32 WINEDEBUG=-all WINEDLLOVERRIDES=$wine_overrides LC_ALL=C.UTF-8
unset DISPLAY
if ! timeout --kill-after=5 300 "$here/with_wine.sh" wine wineboot -i </dev/null >"$log" 2>&1 9>&-; then
    cat "$log" >&2
    echo "wineboot failed" >&2
    exit 1
fi
timeout 60 "$here/with_wine.sh" wineserver -w </dev/null >>"$log" 2>&1 9>&-

# The dialogs ask for faces that no free system has; one stands in that has Chinese glyphs and allows smoothing at
# the dialogs' sizes (a font says in its `gasp` table where it does; without it small glyphs fall apart).
cp /usr/share/fonts/truetype/wqy/wqy-microhei.ttc "$partial/drive_c/windows/Fonts/"
cat >>"$partial/user.reg" <<'END'

[Software\\Wine\\Fonts\\Replacements]
"Microsoft YaHei"="WenQuanYi Micro Hei"
"MingLiU"="WenQuanYi Micro Hei"
"PMingLiU"="WenQuanYi Micro Hei"
"NSimSun"="WenQuanYi Micro Hei"
"SimSun"="WenQuanYi Micro Hei"
"Tahoma"="WenQuanYi Micro Hei"
"Microsoft Sans Serif"="WenQuanYi Micro Hei"

[Control Panel\\Desktop]
"FontSmoothing"="2"
"FontSmoothingGamma"=dword:00000578
"FontSmoothingOrientation"=dword:00000001
"FontSmoothingType"=dword:00000001
END
# Prefixes share these files by hard links, so Wine must never update one in place.
echo disable >"$partial/.update-timestamp"
rm -f "$partial/wineserver"
wine_template_identity >"$partial/.emendo-recipe"

rm -rf "$wine_template"
mv "$partial" "$wine_template"
