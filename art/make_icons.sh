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

entry() {
    printf '%s ICON "icons/%s.ico"\n' "$1" "$2"
}

{
    # HELP is a keyword of the resource compiler, so it is quoted; and it comes first because the
    # compiler would join a quoted name to the file name that ends the line before.
    entry '"HELP"' help
    # The shell takes a program's picture from the first icon in the resource directory, where names
    # come before numbers: without a name that sorts before all others it would show ABOUT.
    entry 1 app
    entry AA-PROGRAM app
    for svg in icons/*.svg; do
        name=$(basename "$svg" .svg)
        case $name in app | help) continue ;; esac
        entry "$(echo "$name" | tr '[:lower:]' '[:upper:]')" "$name"
    done
} >icons.rc
