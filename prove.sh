#!/usr/bin/env bash
# What is too long for every run of the tests, and prints one table:
#   ./prove.sh [MINUTES]     for about so long, besides the building (default: 30)
# Each call of the system going wrong in turn, allocations failing in turn, breaks of the product that must be noticed, a
# user at random, and every fuzz target. Then, on the real program under Wine: loads, hosts, a user at random, and
# memory. A quarter of the time goes to the first user, a quarter to the fuzz targets, and half to Wine.
set -euo pipefail
cd "$(dirname "$0")"
. tools/environment.sh

minutes=${1:-30}
[[ $minutes =~ ^[1-9][0-9]*$ ]] || { say "usage: ./prove.sh [MINUTES]"; exit 2; }
need cmake make g++ ccache libgtest-dev googletest zlib1g-dev clang-19 libclang-rt-19-dev
build native
export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1 UBSAN_OPTIONS=print_stacktrace=1
logs=build/prove
mkdir -p "$logs"
failed=0

# row WHAT RESULT: one line of the table.
row() { printf '| %-22s | %s |\n' "$1" "$2"; }

# tests NAME FILTER: GoogleTest programs of that name.
tests() {
  local start=$SECONDS log=$logs/$1.log
  if "build/native/tests/$1/$1_tests" --gtest_filter="$2" >"$log" 2>&1; then
    row "$1" "$(sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\./\1 passed/p' "$log"), $((SECONDS - start)) s"
  else
    failed=1
    row "$1" "FAILED, see $log"
  fi
}

row what result
row --- ---
tests faults '*'
tests app '*OutOfMemory*'
if tests/mutants.sh >"$logs/mutants.log"; then
  row mutants "$(grep -c . "$logs/mutants.log") noticed"
else
  failed=1
  row mutants "FAILED, see $logs/mutants.log"
fi

# Lives of 250 acts each, by other seeds in every round, until the time is over.
seed=$((RANDOM * 1000))
acts=0
end=$((SECONDS + minutes * 15))
while ((SECONDS < end)); do
  log=$logs/user-$seed.log
  if ! TS_SEED=$seed TS_LIVES=500 build/native/tests/app/app_tests --gtest_filter='RandomUser*' >"$log" 2>&1; then
    failed=1
    row "user at random" "FAILED, see $log"
    break
  fi
  acts=$((acts + $(sed -n 's/ acts in .*//p' "$log")))
  rm "$log"
  seed=$((seed + 500))
done
row "user at random" "$acts acts"

mapfile -t targets < <(sed -n 's/^fuzz_target(\([A-Za-z]*\) .*/\1/p' fuzz/CMakeLists.txt)
for target in "${targets[@]}"; do
  if result=$(fuzz/run.sh $((minutes * 15 / ${#targets[@]} + 1)) "$target"); then
    row "$target" "${result#*: }"
  else
    failed=1
    row "$target" "FAILED, see build/fuzz/$target.log"
  fi
done

need mingw-w64-tools libwine-dev xvfb
choose_flavour
need "$(compiler_packages "$flavour")" "binutils-mingw-w64-$([[ $flavour == win32 ]] && echo i686 || echo x86-64)"
build "$flavour" TSBrowser prove_tests program_bench
display_pid=""
trap 'end_wine; stop_display' EXIT
start_display
use_test_prefix "$PWD/build/wine-prove"

# proof WHAT PROGRAM FILTER LINES [VARIABLE=VALUE...]: proofs and ratios under Wine; a row for each line that they print
# and LINES matches.
proof() {
  local what=$1 program=$2 filter=$3 lines=$4 log
  shift 4
  log=$logs/${what// /-}.log
  if ! env "$@" wine "build/$flavour/$program.exe" --gtest_filter="$filter" >"$log" 2>&1; then
    failed=1
    row "$what" "FAILED, see $log"
  fi
  tr -d '\r' <"$log" | grep -aE "$lines" | while IFS= read -r line; do row "$what" "$line"; done || true
}
proof load bench/program/program_bench 'GrowthBench*' ' grows by '
proof hosts tests/endtoend/prove_tests 'HostProof*' 'starts and|calls$|killed$|races|^longest' \
  TS_STARTS="${TS_STARTS:-$((minutes * 4))}" TS_CALLS=200 TS_KILLS="$((minutes * 2))" TS_RACES="$((minutes * 2))"
# Without the library of the system's file dialogs, which then do not open: in Wine's, a click beside all folders crashes.
proof "user of the program" tests/endtoend/prove_tests 'RandomUserProof*' 'acts in' TS_SECONDS="$((minutes * 10))" \
  WINEDLLOVERRIDES="$WINEDLLOVERRIDES;explorerframe="
proof memory bench/program/program_bench 'MemoryBench*' '^after' TS_SECONDS="$((minutes * 5 + 60))"
exit $failed
