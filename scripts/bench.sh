#!/usr/bin/env bash
# Runs the measuring programs (tests/bench) of the optimised builds and gathers their results: scripts/bench.sh [file.csv]
# Program and wineserver are pinned to one processor, so that no call is timed with a hand-over between two of them.
# Ends with 1 when a target was missed.
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

echo "name,value,unit,ratio,target,met" > "$csv"
status=0
for program in "$root"/build/native-release/tests/bench/bench_*; do
    [ -f "$program" ] && [ -x "$program" ] || continue
    taskset -c $cpu "$program" "$csv" || status=1
done
for program in "$root"/build/win32-release/tests/bench/bench_*.exe; do
    [ -f "$program" ] || continue
    taskset -c $cpu wine "$program" "Z:${csv//\//\\}" || status=1
done
exit $status
