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
version=$(sed -n 's/^project(CVOutlookAddIn VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
[ -n "$version" ] || { echo "setup: CMakeLists.txt names no version" >&2; exit 1; }
stage=build/setup/stage
name=Corvella-Outlook-AddIn-$version

mkdir -p build
scripts/build.sh win32-release CVOutlookAddIn cv_help > build/setup-build.log 2>&1 &&
    scripts/build.sh win64-release CVOutlookAddIn >> build/setup-build.log 2>&1 ||
    { tail -n 40 build/setup-build.log >&2; exit 1; }

# One folder for each bitness: the add-in looks for its texts and its help beside its DLL.
rm -rf build/setup
mkdir -p "$dist"
scripts/dist.sh "$stage" > /dev/null
sed 's/$/\r/' LICENSE > "$stage/LICENSE.txt"
sed -e "s/@VERSION@/$version/" -e 's/$/\r/' setup/README.txt > "$stage/README.txt"
( cd "$stage" && { find . -type f | cut -c3-; echo files.txt; echo Uninstall.exe; } | LC_ALL=C sort | tr / '\\' |
    sed 's/$/\r/' > ../files.txt )
mv build/setup/files.txt "$stage/"
python3 scripts/setup-product.py > build/setup/Product.nsh

# NSIS takes the files in the order of the folder, and their dates not at all; the clock is the sources' own.
export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || echo 0)}
find "$stage" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
makensis -V2 -WX -NOCD \
    "-DSTAGE=$PWD/$stage" "-DOUTFILE=$(realpath "$dist")/$name-setup.exe" "-DVERSION=$version" \
    "-DSIZE=$(du -sk --apparent-size "$stage" | cut -f1)" setup/Setup.nsi
python3 scripts/pack-zip.py "$stage" "$dist/$name.zip"
ls -l "$dist/$name"*
