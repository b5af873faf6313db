#!/usr/bin/env bash
# Times the start of the browser beside each kind of update service, and without any, under Wine:
#   bench/online.sh [BUILD_FOLDER [ROUNDS]]     (default: build/win32, 5)
# Uses the prefix that run.sh made: run that first.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/environment.sh

build=${1:-build/win32}
rounds=${2:-5}
prefix=${TS_BENCH_PREFIX:-$PWD/build/wine}
[[ -f $prefix/flavour ]] || { say "There is no prefix in $prefix yet: ./run.sh makes one."; exit 2; }
flavour=$(cat "$prefix/flavour")
options='HKCU\Software\VB and VBA Program Settings\Tessaly GWX 1.0\Options'

need xvfb python3
display_pid="" server_pid="" port_file=$(mktemp)
trap '[[ -z $server_pid ]] || kill "$server_pid"; rm -f "$port_file"; end_wine; stop_display' EXIT
start_display
use_prefix "$prefix"
python3 bench/web_server.py "$port_file" &
server_pid=$!
until [[ -s $port_file ]]; do sleep 0.1; done
here=http://127.0.0.1:$(cat "$port_file")
keep_question_away

# measure NAME ADDRESS: every start of the rounds asks the service, if there is an address.
measure() {
  echo "== $1"
  wine reg add "$options" /v WebHostPath /d "$2" /f >/dev/null
  wine reg add "$options" /v BannerURLPath /d "$2" /f >/dev/null
  for _ in $(seq "$rounds"); do
    wine reg add "$options" /v NotifyCount /d 0 /f >/dev/null
    wine explorer /desktop=bench,1280x900 "$(windows_path "$(realpath "$build/bench/start_timer.exe")")" \
        "$(windows_path "$(realpath "$build/TSBrowser.exe")")" 1
  done | grep -E 'main window answers|longest wait|has ended after' | sort | awk '
    { name = $0; sub(/ +[0-9]+ ms.*/, "", name); match($0, /[0-9]+ ms/); time = substr($0, RSTART) + 0
      if (!(name in least) || time < least[name]) least[name] = time }
    END { for (name in least) printf "%-46s %6d ms\n", name, least[name] }'
}
measure "no service" ""
for kind in offer refusal silent slow soup loop file huge; do
  measure "$kind" "$here/$kind/"
done
measure "a name that nobody has" http://nowhere.invalid/
measure "a port where nobody listens" http://127.0.0.1:1/
for value in WebHostPath BannerURLPath NotifyCount; do
  wine reg delete "$options" /v "$value" /f >/dev/null
done
give_question_back
