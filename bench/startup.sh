#!/usr/bin/env bash
# Times the start of the browser on the sample library, under Wine:
#   bench/startup.sh [BUILD_FOLDER [ROUNDS]]     (default: build/win32, 5)
# Uses the prefix that run.sh made: run that first.
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/start.sh

milliseconds() { echo $(($(date +%s%N) / 1000000)); }
before=$(milliseconds)
wine "$build/bench/start_timer.exe"
printf '%-46s %6d ms\n' "Wine itself, from nothing" $(($(milliseconds) - before))

wine "$build/bench/load_bench.exe" --folder "$(windows_path "$PWD/build/library")" "$rounds"
keep_question_away
time_starts "$rounds"
give_question_back
