#!/usr/bin/env bash
# Makes what is given to users: scripts/setup.sh [FOLDER]   (dist when no folder is named)
#
#   Corvella-Outlook-AddIn-VERSION-setup.exe   the setup (setup/Setup.nsi)
#   Corvella-Outlook-AddIn-VERSION.zip         the same files with README.txt, to be registered by hand
#
# The same sources give the same bytes, whoever builds them, wherever and whenever.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
dist=${1:-dist}
version=$(scripts/version.py)
stage=build/setup/stage
name=Corvella-Outlook-AddIn-$version

mkdir -p build
scripts/build.sh win32-release CVOutlookAddIn CorvellaCheck cv_help > build/setup-build.log 2>&1 &&
    scripts/build.sh win64-release CVOutlookAddIn >> build/setup-build.log 2>&1 ||
    { tail -n 40 build/setup-build.log >&2; exit 1; }

# One folder for each bitness: the add-in looks for its texts and its help beside its DLL.
rm -rf build/setup
mkdir -p "$dist"
scripts/dist.sh "$stage" > /dev/null
sed 's/$/\r/' LICENSE > "$stage/LICENSE.txt"
sed -e "s/@VERSION@/$version/" -e 's/$/\r/' setup/README.txt > "$stage/README.txt"
python3 scripts/setup-files.py "$stage"
python3 scripts/setup-product.py > build/setup/Product.nsh

SOURCE_DATE_EPOCH=946684800 makensis -V2 -WX -NOCD \
    "-DSTAGE=$PWD/$stage" "-DOUTFILE=$(realpath "$dist")/$name-setup.exe" "-DVERSION=$version" setup/Setup.nsi
python3 scripts/pack-zip.py "$stage" "$dist/$name.zip"
ls -l "$dist/$name"*
