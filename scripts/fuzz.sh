#!/usr/bin/env bash
# Runs every fuzz target for a number of seconds: scripts/fuzz.sh [seconds] [target...]
# New inputs stay in build/fuzz/<target>; what breaks a rule is kept there as well. The corpus in tests/fuzz/corpus,
# which the tests replay, grows by hand only: add what is worth keeping, under a name that says what it is.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
seconds=${1:-60}
shift || true
cd "$root"
cmake --preset native-fuzz >/dev/null
cmake --build --preset native-fuzz -j "$(nproc)" >/dev/null

# Freed memory is watched for a while; a small while leaves room for the other things that this machine does.
export ASAN_OPTIONS="${ASAN_OPTIONS:-quarantine_size_mb=16}"
build=build/native-fuzz/tests/fuzz
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for program in "$build"/fuzz_*; do
        case $program in *_replay | *.cmake) continue ;; esac
        if [ -f "$program" ] && [ -x "$program" ]; then targets+=("${program#"$build"/fuzz_}"); fi
    done
fi

status=0
for target in "${targets[@]}"; do
    found="build/fuzz/$target"
    mkdir -p "$found/inputs"
    options=(-max_total_time="$seconds" -max_len=384 -timeout=10 -print_final_stats=1 "-artifact_prefix=$found/")
    if [ -f "tests/fuzz/$target.dict" ]; then options+=("-dict=tests/fuzz/$target.dict"); fi
    verdict="no finding"
    if ! "$build/fuzz_$target" "${options[@]}" "$found/inputs" "tests/fuzz/corpus/$target" >"$found/log" 2>&1; then
        verdict="ended early, see $found/log"
        status=1
    fi
    if grep -q 'Test unit written to' "$found/log"; then verdict="A FINDING, see $found/log"; fi
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$found/log")
    printf '%-16s %12s executions in %s s: %s\n' "$target" "${executions:-?}" "$seconds" "$verdict"
done
exit $status
