#!/usr/bin/env bash
# pages.sh FOLDER: the documents as pages that a browser opens, with their pictures, in FOLDER.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
docs=$(dirname "$here")/docs
out=$1
mkdir -p "$out/decisions"

# Headings become targets of links, the links lead to the pages.
adapt() {
    sed -E -e 's/(<a href="[^":]*)\.md(#[^"]*)?"/\1.html\2"/g' |
        awk '
            match($0, /^<h[1-6]>/) {
                id = $0
                gsub(/<[^>]*>|&[a-z]+;/, "", id)
                id = tolower(id)
                gsub(/[][(){}.,:;!?"`*\/]/, "", id)
                gsub(/ /, "-", id)
                sub(/^<h[1-6]/, "& id=\"" id "\"")
            }
            { print }'
}

while read -r document; do
    name=${document%.md}
    case $name in
        *.zh-CN) language=zh-CN ;;
        *.zh-TW) language=zh-TW ;;
        *) language=en ;;
    esac
    {
        cat <<END
<!DOCTYPE html>
<html lang="$language">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>$(sed -n 's/^# //p; T; q' "$docs/$document")</title>
<style>
body { font: 16px/1.5 "Segoe UI", "Microsoft YaHei", sans-serif; max-width: 60em; margin: 2em auto; padding: 0 1em; color: #222; }
pre, code { font-family: Consolas, monospace; background: #f3f3f3; }
pre { padding: .7em; overflow-x: auto; }
table { border-collapse: collapse; }
th, td { border: 1px solid #bbb; padding: .25em .6em; text-align: left; vertical-align: top; }
img { max-width: 100%; }
</style>
</head>
<body>
END
        cmark-gfm --extension table "$docs/$document" | adapt
        printf '</body>\n</html>\n'
    } >"$out/$name.html"
done < <(cd "$docs" && find . -name '*.md' -printf '%P\n' | LC_ALL=C sort)
cp -r "$docs/pictures" "$out/"
