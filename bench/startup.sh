#!/usr/bin/env bash
# Times the start of the browser on the sample library, under Wine:
#   bench/startup.sh [BUILD_FOLDER [ROUNDS]]     (default: build/win32, 5)
# Uses the prefix that run.sh made: run that first.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/environment.sh

build=${1:-build/win32}
rounds=${2:-5}
prefix=${TS_BENCH_PREFIX:-$PWD/build/wine}
[[ -f $prefix/flavour ]] || { say "There is no prefix in $prefix yet: ./run.sh makes one."; exit 2; }
flavour=$(cat "$prefix/flavour")

need xvfb
display_pid=""
trap 'end_wine; stop_display' EXIT
start_display
use_prefix "$prefix"

milliseconds() { echo $(($(date +%s%N) / 1000000)); }
before=$(milliseconds)
wine "$build/bench/start_timer.exe"
printf '%-46s %6d ms\n' "Wine itself, from nothing" $(($(milliseconds) - before))

wine "$build/bench/load_bench.exe" --folder "$(windows_path "$PWD/build/library")" "$rounds"
keep_question_away
# In a desktop of its own: without window frames Wine adds waits that no user has.
wine explorer /desktop=bench,1280x900 "$(windows_path "$(realpath "$build/bench/start_timer.exe")")" \
    "$(windows_path "$(realpath "$build/TSBrowser.exe")")" "$rounds" | cat
give_question_back
