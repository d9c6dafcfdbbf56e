#!/usr/bin/env bash
# check_headers.sh COMPILER HEADER...: each header of the border compiles by itself, without <windows.h>, and all of
# them do behind it, since it declares the same window types. They do so too for the other binary interface of 32-bit
# Windows: the sizes and offsets that they assert hold under both.
set -euo pipefail
compiler=$1
shift
headers=("$@")
options=(-x c++ -std=c++17 -Wall -Wextra -Wpedantic -Werror -fsyntax-only
    -I "$(dirname "$(dirname "${headers[0]}")")" -)

# The other interface has no headers of its own here: clang is shown those of COMPILER, with what they ask for.
other=(clang++ --target=i686-pc-windows-msvc -nostdinc -fgnuc-version=12 -fno-ms-compatibility -fdeclspec
    -U_MSC_VER -D__MINGW32__ -D_X86_=1 -D__i386__=1 -isystem "$(clang++ -print-resource-dir)/include")
while read -r folder; do
    other+=(-isystem "$folder")
done < <("$compiler" -E -x c++ -v /dev/null 2>&1 | sed -n '/#include </,/^End/ s/^ //p')

without_windows='
#if defined(_WINDOWS_) || defined(_INC_WINDOWS)
#error windows.h came in
#endif'
all=$(printf '#include "trade/%s"\n' "${headers[@]##*/}")
failed=0
# compile WHAT SOURCE COMMAND...
compile() {
    "${@:3}" "${options[@]}" <<<"$2" || { echo "does not compile with $3: $1" >&2; failed=1; }
}
for header in "${headers[@]}"; do
    compile "$header" "#include \"trade/${header##*/}\"$without_windows" "$compiler"
done
compile "all headers" "$all$without_windows" "${other[@]}"
for command in compiler other; do
    declare -n words=$command
    compile "all headers behind windows.h" "#include <windows.h>"$'\n'"$all" "${words[@]}"
done
exit "$failed"
