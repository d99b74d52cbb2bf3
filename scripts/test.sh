#!/usr/bin/env bash
# All tests: the Windows programs under Wine, the pure text natively under AddressSanitizer and UBSan.
# Writes what each test took to build/*/Testing; ends non-zero when anything fails.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export UBSAN_OPTIONS=print_stacktrace=1
failed=0
for preset in native-asan win32-release; do
    scripts/build.sh "$preset" || exit 1
    jobs=$(nproc)
    [ "$preset" = native-asan ] || . scripts/wine-env.sh  # the prefix first, so that no test waits for it
    ctest --preset "$preset" -j "$jobs" || failed=1
done
exit $failed
