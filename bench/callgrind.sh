#!/bin/sh
# Counts the instructions natively, in memory, of full loads of growing numbers of folders and of files, and of a list of
# growing length, and how much one more of them costs:
#   bench/callgrind.sh [BUILD_FOLDER]      (default: build/native-release)
# Fails when that grows by more than 2 %.
set -eu

# Without the allocator's quick lists: merging them costs the more, the more has been freed, whoever frees it.
export GLIBC_TUNABLES=glibc.malloc.mxfast=0

build=${1:-$(dirname "$0")/../build/native-release}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# instructions FUNCTION MODE...: of the function in a run of the bench.
instructions() {
    function=$1
    shift
    valgrind --tool=callgrind --callgrind-out-file="$work/out" "--toggle-collect=$function" \
        "$build/bench/load_bench" "$@" > "$work/log" 2>&1 || { cat "$work/log" >&2; exit 2; }
    count=$(sed -n 's/.*Collected : *//p' "$work/log")
    if [ "${count:-0}" -eq 0 ]; then
        echo "callgrind.sh: nothing was counted; is the build older than the sources?" >&2
        exit 2
    fi
}

# growth WHAT FUNCTION MODE SIZE...: the cost of one more between each two sizes; % in MODE stands for the size.
growth() {
    what=$1 function=$2 mode=$3
    shift 3
    : > "$work/counts"
    for size in "$@"; do
        # shellcheck disable=SC2046
        instructions "$function" $(echo "$mode" | sed "s/%/$size/")
        echo "$size $count" >> "$work/counts"
    done
    awk -v what="$what" '
        { printf "%6d %s: %10d instructions", $1, what, $2 }
        NR > 1 {
            each = ($2 - count) / ($1 - size)
            printf ", %8.0f for one more", each
            if (NR == 2) first = each
            else printf " (%+.1f %%)", 100 * (each / first - 1)
            failed = failed || each / first > 1.02
        }
        { print ""; size = $1; count = $2 }
        END { exit failed }' "$work/counts" || failed=1
}

growth folders 'library::TemplateLibrary::LoadTreeView()' '--once % 200' 125 250 500
growth 'files a folder' 'library::TemplateLibrary::LoadTreeView()' '--once 25 %' 100 200 400
growth rows 'browser::ListPane::Show(*)' '--fill %' 1000 2500 5000 10000
exit $failed
