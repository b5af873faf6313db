#!/bin/sh
# Writes the help pages from their texts: make_pages.sh OUT makes OUT/en/index.html of en/index.md, and so on.
# The first line of a text is its title. Needs cmark-gfm.
set -eu
here=$(dirname "$0")
out=$1

mkdir -p "$out"
cp "$here/style.css" "$out"
for folder in "$here"/??; do
    language=$(basename "$folder")
    mkdir -p "$out/$language"
    for text in "$folder"/*.md; do
        name=$(basename "$text" .md)
        [ "$name" != contents ] || continue
        {
            cat <<END
<!DOCTYPE html>
<html lang="$language">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>$(sed -n '1s/^# //p' "$text") - Tessaly Desk</title>
<link rel="stylesheet" href="../style.css">
</head>
<body>
<nav>
END
            cmark-gfm "$folder/contents.md" | sed "s/href=\"$name.html\"/& aria-current=\"page\"/"
            printf '</nav>\n<main>\n'
            cmark-gfm --unsafe --extension table "$text"
            printf '</main>\n</body>\n</html>\n'
        } >"$out/$language/$name.html"
    done
    cp "$here/pictures/en"/*.png "$out/$language" # for what has none in its own language
    [ ! -d "$here/pictures/$language" ] || cp "$here/pictures/$language"/*.png "$out/$language"
done
