#!/usr/bin/env bash
# Puts what a user installs into a folder: scripts/dist.sh [FOLDER] (dist when none is named): the release DLL beside its
# language files, help and manual, and in x64 the same with the DLL for 64 bits; the check program.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
dist=${1:-dist}
rm -rf "$dist"
mkdir -p "$dist/x64"
for folder in "$dist" "$dist/x64"; do
    cp lang/*.lng build/win32-release/help/*.chm "$folder"
    cp -R build/win32-release/help/Manual "$folder"
done
cp build/win32-release/src/addin/CVOutlookAddIn.dll "$dist/"
cp build/win64-release/src/addin/CVOutlookAddIn.dll "$dist/x64/"
cp build/win32-release/src/check/CorvellaCheck.exe "$dist/"
ls -l "$dist" "$dist/x64"
