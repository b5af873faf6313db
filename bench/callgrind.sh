#!/bin/sh
# Counts the instructions of one full load of 125, 250 and 500 folders in memory, and how the count grows:
#   bench/callgrind.sh [BUILD_FOLDER]      (default: build/native-release)
# Fails when twice the folders cost more than 2.1 times the instructions.
set -eu

build=${1:-$(dirname "$0")/../build/native-release}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

before=
for folders in 125 250 500; do
    valgrind --tool=callgrind --callgrind-out-file="$work/out" \
        '--toggle-collect=library::TemplateLibrary::LoadTreeView()' \
        "$build/bench/load_bench" --once $folders > "$work/log" 2>&1 || { cat "$work/log" >&2; exit 2; }
    count=$(sed -n 's/.*Collected : *//p' "$work/log")
    if [ "${count:-0}" -eq 0 ]; then
        echo "callgrind.sh: nothing was counted; is the build older than the sources?" >&2
        exit 2
    fi
    awk -v folders="$folders" -v count="$count" -v before="$before" 'BEGIN {
        printf "%3d folders: %9d instructions, %6.0f a folder", folders, count, count / folders
        if (before != "") printf ", %.2f times as many (at most 2.10)", count / before
        printf "\n"
        exit before != "" && count / before > 2.1
    }'
    before=$count
done
