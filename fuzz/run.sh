#!/bin/sh
# Builds the fuzz targets with clang-19 (Debian: clang-19, libclang-rt-19-dev) and runs each:
#   fuzz/run.sh [SECONDS [TARGET...]]      for so long (default: 60, all of them)
#   fuzz/run.sh --quick [TARGET...]        a fixed number of inputs, the same each time: for the test suite
# Both begin with the inputs in fuzz/corpus, where a target has some. Inputs that reach
# something new are kept in build/fuzz/corpus, one that fails in build/fuzz/TARGET-*; the target started with that file
# alone shows the failure again.
set -eu

seconds=${1:-60}
[ $# -eq 0 ] || shift
[ $# -gt 0 ] || set -- TextFuzz PathFuzz DocumentFuzz InflaterFuzz PhoneFuzz RegistryTextFuzz SettingsFuzz LibraryFuzz
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TS_FUZZ_BUILD:-$root/build/fuzz}
mkdir -p "$build"

# GCC judges the warnings; clang does not know them all, and finds fault with the standard library's headers.
quiet="-Wno-unknown-warning-option -Wno-deprecated-declarations"
cmake -S "$root" -B "$build" -DCMAKE_CXX_COMPILER=clang++-19 -DCMAKE_C_COMPILER=clang-19 -DCMAKE_BUILD_TYPE=Debug \
    -DTS_FUZZ=ON -DTS_SANITIZE=ON "-DCMAKE_CXX_FLAGS=-fsanitize=fuzzer-no-link $quiet" > "$build.log" 2>&1 &&
    cmake --build "$build" --parallel "$(nproc)" --target "$@" >> "$build.log" 2>&1 ||
    { tail -n 40 "$build.log" >&2; exit 2; }

# How long a target runs; one that starts a whole browser takes some milliseconds an input.
limit() {
    case $seconds/$1 in
    --quick/SettingsFuzz | --quick/LibraryFuzz) echo -runs=1000 -seed=1 -max_len=512 ;;
    --quick/*) echo -runs=50000 -seed=1 -max_len=1024 ;;
    *) echo -max_total_time="$seconds" -max_len=4096 ;;
    esac
}

failed=0
for target in "$@"; do
    grown=$build/corpus/$target
    [ "$seconds" != --quick ] || { grown=$build/quick/$target; rm -rf "$grown"; }
    mkdir -p "$grown"
    kept=$root/fuzz/corpus/$target # a few inputs that reach most of the code
    [ -d "$kept" ] || kept=
    # shellcheck disable=SC2046
    if "$build/fuzz/$target" $(limit "$target") -timeout=60 -print_final_stats=1 -artifact_prefix="$build/$target-" \
        "$grown" ${kept:+"$kept"} > "$build/$target.log" 2>&1; then
        sed -n "s/.*stat::number_of_executed_units: */$target: no failure, inputs run: /p" "$build/$target.log"
    else
        failed=1
        echo "$target: FAILED"
        grep -v '^#' "$build/$target.log" | tail -n 40
    fi
done
exit $failed
