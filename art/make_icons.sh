#!/bin/sh
# Renders every icons/NAME.svg into icons/NAME.ico and lists them in icons.rc.
# Needs rsvg-convert and ImageMagick; the results are committed, so the build needs neither.
set -eu
cd "$(dirname "$0")"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for svg in icons/*.svg; do
    name=$(basename "$svg" .svg)
    sizes="16 20 24 32 48"
    [ "$name" = app ] && sizes="$sizes 64 256"
    pngs=""
    for size in $sizes; do
        rsvg-convert -w "$size" -h "$size" -o "$work/$name-$size.png" "$svg"
        pngs="$pngs $work/$name-$size.png"
    done
    # True colour with alpha for every size: without the type ImageMagick would write a palette
    # where few colours occur, and the edges would lose their alpha.
    # shellcheck disable=SC2086 # the list of files is meant to be split
    convert $pngs -type TrueColorAlpha "icons/$name.ico"
done

{
    # The shell shows the first icon as the program's own.
    # Names are quoted because some (HELP, a hyphen) mean something to the resource compiler; it drops the quotes.
    echo '1 ICON "icons/app.ico"'
    for svg in icons/*.svg; do
        name=$(basename "$svg" .svg)
        [ "$name" = app ] && continue
        printf '"%s" ICON "icons/%s.ico"\n' "$(echo "$name" | tr '[:lower:]' '[:upper:]')" "$name"
    done
} >icons.rc
