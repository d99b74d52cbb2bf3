#!/usr/bin/env bash
# The function and line of an address in the library: scripts/where.sh FILE.debug OFFSET
# OFFSET is what a crash report of Windows names for CVOutlookAddIn.dll: counted from where the library was loaded.
set -euo pipefail
tools=i686-w64-mingw32
[[ $1 != *-64.debug ]] || tools=x86_64-w64-mingw32
base=$("$tools-objdump" -p "$1" | awk '$1 == "ImageBase" { print $2 }')
"$tools-addr2line" --functions --demangle --inlines --pretty-print --exe="$1" "$(printf '0x%x' $((0x$base + $2)))" |
    sed -E 's#build/win[0-9]+-[a-z]+/(\.\./\.\./)?##'
