#!/usr/bin/env bash
# format.sh [--check]: brings the tracked sources into the form of .clang-format, or only names those that are not.
set -euo pipefail
cd "$(dirname "$(realpath "${BASH_SOURCE[0]}")")/.."
if ! command -v clang-format >/dev/null; then
    DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 -y -q install clang-format </dev/null >/dev/null
fi
mode=-i
[ "${1-}" != --check ] || mode="--dry-run --Werror"
# shellcheck disable=SC2086
git ls-files -z '*.cpp' '*.h' | xargs -0 -r clang-format $mode
