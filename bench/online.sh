#!/usr/bin/env bash
# Times the start of the browser beside each kind of update service, and without any, under Wine:
#   bench/online.sh [BUILD_FOLDER [ROUNDS]]     (default: build/win32, 5)
# The kinds take turns, a start each in every round, so that whatever else the machine does meets them all alike.
# Prints least and median of each, and of the starts the ratio to those without a service. Uses the prefix that run.sh
# made: run that first.
set -euo pipefail
cd "$(dirname "$0")/.."
. bench/start.sh

options='HKCU\Software\VB and VBA Program Settings\Tessaly GWX 1.0\Options'
connections='HKCU\Software\Microsoft\Windows\CurrentVersion\Internet Settings\Connections'
# As the system stores a proxy: version, counter, kind, length and name ("127.0.0.1:1"), no exceptions, no script.
dead_proxy=4600000001000000030000000b0000003132372e302e302e313a310000000000000000$(printf '%064d' 0)

work=$(mktemp -d)
python3 bench/web_server.py "$work/port" &
at_end="kill $!; rm -rf $work"
until [[ -s $work/port ]]; do sleep 0.1; done
here=http://127.0.0.1:$(cat "$work/port")
keep_question_away

# measure NAME ADDRESS: one start, which asks the service, if there is an address, and for its banner.
measure() {
  local value
  for value in WebHostPath BannerURLPath; do wine reg add "$options" /v "$value" /d "$2" /f >/dev/null; done
  wine reg add "$options" /v NotifyCount /d 0 /f >/dev/null
  time_starts 1 | sed -nE "s/^the (main window) answers +([0-9]+) ms.*/$1|start|\2/p
    s/^the (longest wait) for an answer +([0-9]+) ms.*/$1|longest wait|\2/p
    s/^closed, it has ended after +([0-9]+) ms.*/$1|closing|\1/p" >>"$work/times"
}
for _ in $(seq "$rounds"); do
  measure "no service" ""
  for kind in offer refusal silent slow soup scripts loop file huge; do measure "$kind" "$here/$kind/"; done
  measure "a name that nobody has" http://nowhere.invalid/
  measure "a port where nobody listens" http://127.0.0.1:1/
  wine reg add "$connections" /v DefaultConnectionSettings /t REG_BINARY /d "$dead_proxy" /f >/dev/null
  measure "a dead proxy" "$here/offer/"
  wine reg delete "$connections" /v DefaultConnectionSettings /f >/dev/null
done
for value in WebHostPath BannerURLPath NotifyCount; do wine reg delete "$options" /v "$value" /f >/dev/null; done
give_question_back

python3 - "$work/times" <<'END'
import statistics
import sys
times = {}
for line in open(sys.argv[1], encoding="ascii"):
    kind, figure, time = line.strip().split("|")
    times.setdefault(kind, {}).setdefault(figure, []).append(int(time))
print(f"{'least / median, ms':30}{'start':>14}{'ratio':>16}{'longest wait':>16}{'closing':>14}")
alone = times["no service"]["start"]
for kind, figures in times.items():
    def both(figure):
        return f"{min(figures[figure])} / {statistics.median(figures[figure]):.0f}"
    ratio = f"{min(figures['start']) / min(alone):.2f} / {statistics.median(figures['start']) / statistics.median(alone):.2f}"
    print(f"{kind:30}{both('start'):>14}{ratio:>16}{both('longest wait'):>16}{both('closing'):>14}")
END
