#!/usr/bin/env bash
# Makes the setup, and an older one that has a file more, and tests them under Wine (tests/setup): installing for one
# user and for all, upgrading under a running host, failing and being killed at every step, uninstalling.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh build/setup-dist > build/setup-make.log 2>&1 || { tail -n 40 build/setup-make.log >&2; exit 1; }
scripts/build.sh win32-release OutlookStandIn standin_corvella > build/setup-host.log 2>&1 ||
    { tail -n 40 build/setup-host.log >&2; exit 1; }
setup=$(echo build/setup-dist/*-setup.exe)

older=build/setup/older
mkdir -p "$older"
cp -R build/setup/stage build/setup/Product.nsh "$older/"
echo "only in the older version" > "$older/stage/Obsolete.txt"
printf 'Obsolete.txt\r\n' >> "$older/stage/files.txt"
makensis -V2 -WX -NOCD "-DSTAGE=$PWD/$older/stage" "-DOUTFILE=$PWD/$older/older-setup.exe" -DVERSION=1.9.0 -DSIZE=2000 \
    setup/Setup.nsi || exit 1

size=$(stat -c %s "$setup")
[ "$size" -le 1048576 ] || { echo "setup-test: the setup takes $size bytes, more than 1 MB" >&2; exit 1; }

. scripts/wine-env.sh
program=$(find build/win32-release -name OutlookStandIn.exe | head -n 1)
run() {
    python3 tests/setup/setup_test.py "$1" "$setup" "$older/older-setup.exe" "$program" \
        build/win32-release/standins/corvella/Corvella.exe > "build/setup-test-$1.log" 2>&1
}
passed=0 failed=0 cases=(user all faults) processes=()
for case in "${cases[@]}"; do run "$case" & processes+=($!); done
for i in "${!cases[@]}"; do
    if wait "${processes[$i]}"; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        cat "build/setup-test-${cases[$i]}.log"
    fi
done
echo "setup: $passed passed, $failed failed"
[ "$failed" = 0 ]
