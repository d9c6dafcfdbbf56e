# shellcheck shell=bash
# Where the 32-bit Wine and its prepared prefix are. Sourced by the other scripts.

EMENDO_CACHE=${EMENDO_CACHE:-/var/cache/emendo}

# Raise this number when the contents of the i386 root change: an older root is then made again.
wine_root_recipe=1
wine_root=$EMENDO_CACHE/wine-i386
wine_root_stamp=$wine_root/.emendo-recipe

# Written by setup.sh when the `wine` on PATH was seen running a 32-bit program; holds what identifies that wine.
wine_on_path_stamp=$EMENDO_CACHE/wine-on-path

# A finished prefix, from which every prefix in a build folder is copied. Raise the number when its contents change.
wine_template_recipe=3
wine_template=$EMENDO_CACHE/wine-prefix
wine_template_stamp=$wine_template/.emendo-recipe

# winedbg would hold a crashed program until its time limit; the others ask for downloads or write desktop menus.
wine_overrides='winedbg.exe=d;winemenubuilder.exe=d;mscoree,mshtml='

# The `wine` on PATH as one line that changes when it is replaced; nothing when there is none.
wine_on_path_identity() {
    local found
    found=$(command -v wine) || return 0
    stat -L -c "$found %s %Y" "$found"
}

# Prints `path`, `root` or `none`: the Wine that is used.
wine_kind() {
    if [ -r "$wine_on_path_stamp" ] && [ "$(<"$wine_on_path_stamp")" = "$(wine_on_path_identity)" ]; then
        echo path
    elif [ -r "$wine_root_stamp" ] && [ "$(<"$wine_root_stamp")" = "$wine_root_recipe" ]; then
        echo root
    else
        echo none
    fi
}

# What the template must have been made with to be used.
wine_template_identity() {
    case $(wine_kind) in
        path) echo "$wine_template_recipe $(wine_on_path_identity)" ;;
        *) echo "$wine_template_recipe root $wine_root_recipe" ;;
    esac
}

wine_template_ready() {
    [ -r "$wine_template_stamp" ] && [ "$(<"$wine_template_stamp")" = "$(wine_template_identity)" ]
}
