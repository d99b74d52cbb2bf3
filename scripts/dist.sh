#!/usr/bin/env bash
# Puts what a user installs into dist/: the release DLL beside its language files.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
dll=$(find build/win32-release -name CVOutlookAddIn.dll | head -n 1)
rm -rf dist
mkdir dist
cp "$dll" lang/*.lng dist/
ls -l dist
