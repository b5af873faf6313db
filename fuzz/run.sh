#!/bin/sh
# Builds the fuzz targets (preset native: clang-19 and libclang-rt-19-dev of Debian) and runs each:
#   fuzz/run.sh [SECONDS [TARGET...]]      for so long (default: 60, all of them)
#   fuzz/run.sh --quick [TARGET...]        a fixed number of inputs, the same each time: for the test suite
# Both begin with the inputs in fuzz/corpus, where a target has some. Inputs that reach
# something new are kept in build/fuzz/corpus, one that fails in build/fuzz/TARGET-*; the target started with that file
# alone shows the failure again.
set -eu

seconds=${1:-60}
[ $# -eq 0 ] || shift
root=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck disable=SC2046
[ $# -gt 0 ] || set -- $(sed -n 's/^fuzz_target(\([A-Za-z]*\) .*/\1/p' "$root/fuzz/CMakeLists.txt")
build=$root/build/native
mkdir -p "$root/build/fuzz"

cd "$root"
{ [ -f "$build/Makefile" ] || cmake --preset native; } > build/fuzz/build.log 2>&1 &&
    cmake --build "$build" --parallel "$(nproc)" --target "$@" >> build/fuzz/build.log 2>&1 ||
    { tail -n 40 build/fuzz/build.log >&2; exit 2; }
work=$root/build/fuzz

# How long a target runs, and the bytes of its longest input: one that starts a whole browser takes some milliseconds an
# input, and a whole document has some length.
limit() {
    case $seconds/$1 in
    --quick/SettingsFuzz | --quick/LibraryFuzz) echo -runs=1000 -seed=1 -max_len=512 ;;
    --quick/RtfFuzz | --quick/ArchiveFuzz | --quick/OfficeFuzz | --quick/OpenXmlFuzz | --quick/CompoundFuzz | \
        --quick/PropertySetFuzz | --quick/PdfFuzz) echo -runs=10000 -seed=1 -max_len=16384 ;;
    --quick/*) echo -runs=50000 -seed=1 -max_len=1024 ;;
    */ArchiveFuzz | */CompoundFuzz | */PdfFuzz) echo -max_total_time="$seconds" -max_len=65536 ;;
    */RtfFuzz | */OfficeFuzz | */OpenXmlFuzz | */PropertySetFuzz) echo -max_total_time="$seconds" -max_len=16384 ;;
    *) echo -max_total_time="$seconds" -max_len=4096 ;;
    esac
}

failed=0
for target in "$@"; do
    grown=$work/corpus/$target
    [ "$seconds" != --quick ] || { grown=$work/quick/$target; rm -rf "$grown"; }
    mkdir -p "$grown"
    kept=$root/fuzz/corpus/$target # a few inputs that reach most of the code
    [ -d "$kept" ] || kept=
    # shellcheck disable=SC2046
    if "$build/fuzz/$target" $(limit "$target") -timeout=60 -print_final_stats=1 -artifact_prefix="$work/$target-" \
        "$grown" ${kept:+"$kept"} > "$work/$target.log" 2>&1; then
        sed -n "s/.*stat::number_of_executed_units: */$target: no failure, inputs run: /p" "$work/$target.log"
    else
        failed=1
        echo "$target: FAILED"
        grep -v '^#' "$work/$target.log" | tail -n 40
    fi
done
exit $failed
