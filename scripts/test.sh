#!/usr/bin/env bash
# All tests: the Windows programs under Wine, the pure text natively under AddressSanitizer and UBSan.
# Ends non-zero when anything fails.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export UBSAN_OPTIONS=print_stacktrace=1
failed=0

scripts/build.sh native-asan || exit 1
ctest --preset native-asan -j "$(nproc)" || failed=1

scripts/build.sh win32-release || exit 1
. scripts/wine-env.sh
# One Windows program stays for the whole run, until its input ends. Else Wine's own services would end and start again
# between tests, and would keep the output of the test that happened to start them open: it would seem to run as long.
exec 7> >(wine cmd >/dev/null 2>&1)
ctest --preset win32-release -j "$(nproc)" 7>&- || failed=1
exec 7>&-
exit $failed
