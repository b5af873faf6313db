# What the benches of the start share: the prefix that run.sh made, a display, and one run of the timer in it.
# Sourced with the arguments [BUILD_FOLDER [ROUNDS]] (default: build/win32, 5), from the project's root.
. tools/environment.sh

build=${1:-build/win32}
rounds=${2:-5}
prefix=${TS_BENCH_PREFIX:-$PWD/build/wine}
[[ -f $prefix/flavour ]] || { say "There is no prefix in $prefix yet: ./run.sh makes one."; exit 2; }
flavour=$(cat "$prefix/flavour")

need xvfb python3
display_pid=""
at_end=:
trap 'eval "$at_end"; end_wine; stop_display' EXIT
start_display
use_prefix "$prefix"

# time_starts ROUNDS: in a desktop of its own, since without window frames Wine adds waits that no user has.
time_starts() {
  wine explorer /desktop=bench,1280x900 "$(windows_path "$(realpath "$build/bench/start_timer.exe")")" \
    "$(windows_path "$(realpath "$build/TSBrowser.exe")")" "$1" | cat
}
