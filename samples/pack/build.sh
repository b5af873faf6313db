#!/bin/sh
# Builds the sample solution pack from its sources:
#   samples/pack/build.sh FILE.exe [TARGET]      TARGET: of makensis, where not the default's programs run
# Needs makensis (Debian: nsis) and what make_samples.py needs. The templates go to a folder beside the file.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$(dirname "$1")"
out=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
python3 "$here/../make_samples.py" --pack "${out%.exe}-templates" >&2
LC_ALL=C.UTF-8 makensis -V2 ${2:+"-DTARGET=$2"} "-DSOURCE=${out%.exe}-templates" "-DOUTFILE=$out" "$here/GardenPack.nsi" >&2
