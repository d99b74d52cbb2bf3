#!/usr/bin/env bash
# Runs the measuring programs (tests/bench) of the optimised builds and gathers their results: scripts/bench.sh [file.csv]
# Program and wineserver are pinned to one processor, so that no call is timed with a hand-over between two of them.
# A program that misses a target measures once more: other work on the machine seldom disturbs twice.
# Ends with 1 when a target was missed twice or a program took longer than ten minutes.
set -uo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
csv=$(realpath -m "${1:-$root/build/bench.csv}")
cpu=0

cd "$root" || exit 2
for preset in native-release win32-release; do
    scripts/build.sh "$preset" benches > "build/bench-$preset.log" 2>&1 || { tail -n 30 "build/bench-$preset.log"; exit 2; }
done
. "$root/scripts/wine-env.sh" || exit 2
wine cmd /c exit  # so that the prefix's wineserver runs
servers=$(for pid in $(pgrep wineserver); do
    tr '\0' '\n' 2>/dev/null < "/proc/$pid/environ" | grep -qx "WINEPREFIX=$WINEPREFIX" && echo "$pid"
done)
restore() { for pid in $servers; do taskset -pc "0-$(($(nproc --all) - 1))" "$pid" >/dev/null 2>&1; done; }
trap restore EXIT
for pid in $servers; do taskset -pc $cpu "$pid" >/dev/null; done

lines=$root/build/bench-lines.csv
status=0
echo "name,value,unit,ratio,target,met" > "$csv"

run() {  # program, its file of lines
    rm -f "$lines"
    timeout 600 taskset -c $cpu "$@"
}
missed() { grep ',no$' "$lines" | cut -d '"' -f 2 | sort; }  # the targets by their names, one a line
measure() {
    local code=0 before twice
    run "$@" || code=$?
    if [ $code -eq 1 ] && [ -f "$lines" ]; then
        before=$(missed)
        echo "${*: -2:1}: once more"
        code=0
        run "$@" || code=$?
        if [ $code -eq 1 ] && [ -f "$lines" ]; then
            twice=$(comm -12 <(echo "$before") <(missed))
            [ -n "$twice" ] && echo "missed twice: $twice" || code=0
        fi
    fi
    [ $code -eq 0 ] || { echo "${*: -2:1} ended with $code"; status=1; }
    [ -f "$lines" ] && cat "$lines" >> "$csv"
}

for program in "$root"/build/native-release/tests/bench/bench_*; do
    [ -f "$program" ] && [ -x "$program" ] && measure "$program" "$lines"
done
for program in "$root"/build/win32-release/tests/bench/bench_*.exe; do
    [ -f "$program" ] && measure wine "$program" "Z:${lines//\//\\}"
done
rm -f "$lines"
exit $status
