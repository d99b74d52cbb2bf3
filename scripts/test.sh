#!/usr/bin/env bash
# All tests: the Windows programs under Wine, the pure text natively under AddressSanitizer and UBSan.
# Ends non-zero when anything fails.
#
#   scripts/test.sh          32 bits in full; of 64 bits the product's scenarios, the ribbon and what depends on the size of
#                            a pointer; of Outlook 2010 and later, which differ little, 2016, but the ribbon in all three
#   scripts/test.sh --whole  everything in both, every version, each call of the host failing in every way
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export UBSAN_OPTIONS=print_stacktrace=1
failed=0
targets64=(CVOutlookAddIn installed_addin e2e_ribbon e2e_scenarios platform_form_test platform_registration_test)
tests64='register_addin|library|addin_registration|addin_registration_beside|addin_created_by_script'
tests64="^($tests64|e2e_ribbon|e2e_scenarios|platform_form_test|platform_registration_test)\$"
leave_out=(--label-exclude whole)
if [ "${1:-}" = --whole ]; then
    export CV_WHOLE=1
    targets64=(all) tests64=. leave_out=()
fi

scripts/build.sh native-asan || exit 1
ctest --preset native-asan -j "$(nproc)" || failed=1

scripts/build.sh win32-release || exit 1
scripts/build.sh win64-release "${targets64[@]}" || exit 1
. scripts/wine-env.sh
# One Windows program stays for the whole run, until its input ends. Else Wine's own services would end and start again
# between tests, and would keep the output of the test that happened to start them open: it would seem to run as long.
exec 7> >(wine cmd >/dev/null 2>&1)
# Windows, their focus and the time that a hang takes to be seen depend on what else the machine does: what fails is tried
# once more, and the output says so.
again=(--repeat until-pass:2)
ctest --preset win32-release -j "$(nproc)" "${again[@]}" "${leave_out[@]}" 7>&- || failed=1
ctest --preset win64-release -j "$(nproc)" "${again[@]}" "${leave_out[@]}" --tests-regex "$tests64" 7>&- || failed=1
exec 7>&-
scripts/setup-test.sh || failed=1
scripts/reproducible.sh --relink || failed=1
[ "${1:-}" != --whole ] || scripts/symbols.sh build/symbols || failed=1
exit $failed
