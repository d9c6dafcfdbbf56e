#!/bin/sh
# Builds the small terminal with MinGW.
#
# usage: build_mingw.sh [OUTPUT [compiler options]]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
output=${1:-$here/small_host_mingw.exe}
[ $# -lt 1 ] || shift
[ $# -gt 0 ] || set -- "-I$here/../include"
"${MINGW:-i686-w64-mingw32-g++-posix}" -std=c++17 -O2 -Wall -Wextra -static "$here/small_host.cpp" -o "$output" "$@"
