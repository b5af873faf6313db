#!/usr/bin/env bash
# The thumbnail view on 500 pictures of 800 x 600 under Wine: time to the first screen and to all of them, the longest
# wait of a message, peak memory, the way back to a folder, and a change of folder in the middle. ./run.sh must have built once.
#   bench/thumbnails.sh [DPI]
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/environment.sh
need xvfb imagemagick
choose_flavour
build "$flavour" thumbnail_bench

work=$(mktemp -d)
display_pid=""
trap 'end_wine; stop_display; rm -rf "$work"' EXIT
mkdir -p "$work/library/"{Many,Few,Others,Last}/Previews
for i in $(seq 0 9); do
  convert -size 800x600 -seed "$i" plasma:white-steelblue -quality 85 "$work/$i.jpg"
done
for i in $(seq 500); do cp "$work/$((i % 10)).jpg" "$work/library/Many/Previews/Picture $i.jpg"; done
for i in $(seq 200); do cp "$work/$((i % 10)).jpg" "$work/library/Others/Previews/Picture $i.jpg"; done
for folder in Few Last; do
  for i in $(seq 12); do cp "$work/$((i % 10)).jpg" "$work/library/$folder/Previews/Picture $i.jpg"; done
done
cp samples/background.bmp "$work/library/" 2>/dev/null || convert -size 130x150 xc:white -bordercolor grey -border 2 -type TrueColor BMP3:"$work/library/background.bmp"
start_display
use_prefix "$work/wine" || [[ $? == 10 ]]
wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "${1:-96}" /f >/dev/null
wineserver -w
wine explorer /desktop=Bench,1280x900 "$(windows_path "$PWD/build/$flavour/bench/thumbnail_bench.exe")" \
  "$(windows_path "$work/library")" >"$work/out" 2>/dev/null || true
cat "$work/out"
