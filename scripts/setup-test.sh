#!/usr/bin/env bash
# Makes the setup, and an older one that has a file more, and tests them under Wine: scripts/setup-test.sh [CASE...]
# (tests/setup/setup_test.py lists the cases; all of them when none is named)
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
cases=("$@")
[ $# -gt 0 ] || cases=(user all faults kills finding pages)
scripts/setup.sh build/setup-dist > build/setup-make.log 2>&1 || { tail -n 40 build/setup-make.log >&2; exit 1; }
scripts/build.sh win32-release OutlookStandIn standin_corvella setup_obstacle > build/setup-host.log 2>&1 ||
    { tail -n 40 build/setup-host.log >&2; exit 1; }
setup=$(echo build/setup-dist/*-setup.exe)

older=build/setup/older
mkdir -p "$older"
cp -R build/setup/stage build/setup/Product.nsh "$older/"
echo "only in the older version" > "$older/stage/Obsolete.txt"
python3 scripts/setup-files.py "$older/stage"
makensis -V2 -WX -NOCD "-DSTAGE=$PWD/$older/stage" "-DOUTFILE=$PWD/$older/older-setup.exe" -DVERSION=1.9.0 setup/Setup.nsi ||
    exit 1

size=$(stat -c %s "$setup")
[ "$size" -le 1048576 ] || { echo "setup-test: the setup takes $size bytes, more than 1 MB" >&2; exit 1; }

scripts/version.py --built build/setup/stage/CVOutlookAddIn.dll build/setup/stage/x64/CVOutlookAddIn.dll "$setup" || exit 1

# What other tests have registered in the usual prefix is no concern of these.
. scripts/wine-env.sh
( flock 9; cv_make_fresh_prefix ) 9>build/wine.lock || exit 1
python3 tests/setup/setup_test.py prepare build/setup-world || { echo "setup-test: Wine could not be prepared" >&2; exit 1; }
export CV_SETUP_PROGRAMS="$setup $older/older-setup.exe build/win32-release/standins/outlook/program/OutlookStandIn.exe
    build/win32-release/standins/corvella/Corvella.exe build/win32-release/tests/setup/setup_obstacle.exe"
rm -f build/setup-test-*.log
printf '%s\n' "${cases[@]}" | xargs -P "$(nproc)" -I CASE bash -c \
    'python3 tests/setup/setup_test.py CASE build/setup-world $CV_SETUP_PROGRAMS > build/setup-test-CASE.log 2>&1'
failed=$?
if [ "$failed" = 0 ]; then
    echo "setup: $(cat build/setup-test-*.log | grep -c '^ok ') tests passed"
else
    grep -h '^not so\|^failed\|Error' build/setup-test-*.log
    echo "setup: some tests failed; build/setup-test-CASE.log has the whole"
fi
[ "$failed" = 0 ]
