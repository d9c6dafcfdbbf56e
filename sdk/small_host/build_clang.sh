#!/bin/sh
# Builds a terminal with clang for the binary interface of the usual compiler of the system, on a machine that has
# neither that compiler nor its libraries: with MinGW's headers and import libraries and the start-up of start.c. With
# that compiler itself none of this is needed:
#     cl /std:c++17 /I ..\include small_host.cpp user32.lib
#
# usage: build_clang.sh [OUTPUT [SOURCE [clang options]]]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
output=${1:-$here/small_host_clang.exe}
source=${2:-$here/small_host.cpp}
[ $# -lt 2 ] || shift 2
[ $# -gt 0 ] || set -- "-I$here/../include"
mingw=${MINGW:-i686-w64-mingw32-g++-posix}

# The system's and the C++ headers; what belongs to MinGW's compiler alone stays out.
headers=$("$mingw" -x c++ -E -v /dev/null 2>&1 | sed -n '/^#include </,/^End/s/^ \(.*\)/\1/p' |
    grep -v '/gcc/[^.]*/include\(-fixed\)\?$' | sed 's/^/-isystem/')
compile() {
    # shellcheck disable=SC2086
    clang --target=i686-pc-windows-msvc -fgnuc-version=12 -fms-extensions -D_X86_ -D__USE_MINGW_ANSI_STDIO=0 \
        $headers -O1 -Wall -Wextra -Werror -mno-stack-arg-probe -c "$@"
}
compile -x c "$here/start.c" -o "$output.start.obj"
compile -x c++ -std=c++17 -fno-exceptions -fno-rtti "$source" -o "$output.obj" "$@"

libraries=
for name in kernel32 user32 msvcrt; do
    libraries="$libraries $("$mingw" -print-file-name=lib$name.a)"
done
# shellcheck disable=SC2086
lld-link /nologo /nodefaultlib /entry:mainCRTStartup /subsystem:console /safeseh:no /stack:0x100000,0x100000 \
    "/out:$output" "$output.obj" "$output.start.obj" $libraries
rm -f "$output.obj" "$output.start.obj"
