#!/usr/bin/env bash
# Builds and runs every test: natively under ASan and UBSan, then under Wine. Ends with one line of counts.
#   ./test.sh            everything
#   ./test.sh --native   the native part alone (seconds, for work on the rules)
set -euo pipefail
cd "$(dirname "$0")"
. tools/environment.sh

native_only=""
case ${1:-} in
"") ;;
--native) native_only=yes ;;
*) say "usage: ./test.sh [--native]"; exit 2 ;;
esac

passed=0
failed=0
skipped=0
trap 'exit 130' INT # a test that ends in its own way when it is interrupted does not end this
logs=build/test-logs
rm -rf "$logs"
mkdir -p "$logs"

# count LOG WORD: the number that GoogleTest's closing line with this word tells.
count() {
  sed -nE "s/^\[ +$2 +\] ([0-9]+) tests?[.,].*/\1/p" "$1" | tail -n 1
}

# suite NAME SECONDS COMMAND...: one GoogleTest program.
suite() {
  local name=$1 seconds=$2 status=0 log good bad out
  shift 2
  log=$logs/$name.log
  say "== $name"
  timeout --foreground --kill-after=10 "$seconds" "$@" >"$log" 2>&1 </dev/null || status=$?
  good=$(count "$log" PASSED)
  bad=$(count "$log" FAILED)
  out=$(count "$log" SKIPPED)
  # A program that is missing, ended without its closing line or ran no test failed, whatever it counted.
  if [[ $((${good:-0} + ${bad:-0} + ${out:-0})) == 0 || ($status != 0 && ${bad:-0} == 0) ]]; then
    bad=$((${bad:-0} + 1))
    say "   $name ended with $status after ${good:-no} tests"
  fi
  passed=$((passed + ${good:-0}))
  failed=$((failed + ${bad:-0}))
  skipped=$((skipped + ${out:-0}))
  if ((${bad:-0})); then
    grep -aE 'Failure|FAILED|Which is|Expected|Actual|ERROR|runtime error|trace:' "$log" | head -n 80 >&2 || true
    tail -n 15 "$log" >&2
  fi
}

# check NAME COMMAND...: one check that passes or fails as a whole.
check() {
  local name=$1
  shift
  say "== $name"
  if "$@" >"$logs/$name.log" 2>&1 </dev/null; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    tail -n 40 "$logs/$name.log" >&2
  fi
}

export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1 UBSAN_OPTIONS=print_stacktrace=1

# The formatter of this version alone: each lays out something in another way.
well_formatted() {
  git ls-files --cached --others --exclude-standard -z '*.h' '*.cpp' | xargs -0 -P "$(nproc)" -n 16 clang-format-19 --dry-run -Werror
}

need cmake make g++ ccache libgtest-dev googletest zlib1g-dev python3 imagemagick fontconfig fonts-dejavu-core \
  clang-format-19 clang-tidy-19 clang-19 libclang-rt-19-dev
check includes tests/check_includes.sh
check format well_formatted
build native
for name in platform documents pictures ui app faults library browser packs profiles online search; do
  suite "$name" 300 "build/native/tests/$name/${name}_tests"
done
check tidy tests/check_tidy.py build/native
check fuzz fuzz/run.sh --quick
check translations translations/texts.py --check
check samples python3 -B -m unittest discover -s samples -p 'test_*.py'

if [[ -z $native_only ]]; then
  need mingw-w64-tools libwine-dev nsis cmark-gfm xvfb x11-utils
  choose_flavour
  need "$(compiler_packages "$flavour")" "binutils-mingw-w64-$([[ $flavour == win32 ]] && echo i686 || echo x86-64)"
  build "$flavour"
  build "$flavour" setup
  check imports tests/check_imports.sh "build/$flavour/TSBrowser.exe"
  display_pid=""
  trap 'end_wine; stop_display' EXIT
  start_display
  use_test_prefix "$PWD/build/wine-tests"
  check setup python3 -B tests/setup/test_setup.py "build/$flavour"
  tests=build/$flavour/tests
  suite platform-wine 300 wine "$tests/platform/platform_win32_tests.exe"
  suite pictures-wine 300 wine "$tests/pictures/win32/pictures_win32_tests.exe"
  suite automation-wine 600 wine "$tests/automation/automation_tests.exe"
  suite profiles-wine 300 wine "$tests/profiles/win32/profiles_win32_tests.exe"
  for dpi in 96 144; do
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
    wineserver -w
    suite "ui-wine-$dpi" 300 wine "$tests/ui/win32/ui_win32_tests.exe"
  done
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d 96 /f >/dev/null
  wineserver -w
  suite endtoend-wine 600 wine "$tests/endtoend/endtoend_tests.exe"
fi

echo "$passed passed, $failed failed, $skipped skipped"
((failed == 0))
