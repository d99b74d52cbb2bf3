#!/usr/bin/env bash
# Puts what a user installs into dist/: the release DLL beside its language files, help and manual.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
dll=build/win32-release/src/addin/CVOutlookAddIn.dll
rm -rf dist
mkdir dist
cp "$dll" lang/*.lng build/win32-release/help/*.chm dist/
cp -R build/win32-release/help/Manual dist/
ls -l dist
