#!/usr/bin/env bash
# Keeps, for the libraries as shipped, which line of the sources each address comes from: scripts/symbols.sh [FOLDER]
#
#   FOLDER/CVOutlookAddIn-VERSION-32.debug, -64.debug   (dist when no folder is named); scripts/where.sh reads them
#
# The libraries are built once more with debug information, and have to be, without it, the shipped ones but for their headers.
# At the end the files have to tell the lines of the exported functions.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
dist=${1:-dist}
version=$(scripts/version.py)
mkdir -p "$dist"
for bits in 32 64; do
    tools=i686-w64-mingw32
    [ "$bits" = 32 ] || tools=x86_64-w64-mingw32
    log=build/symbols-$bits.log
    scripts/build.sh "win$bits-release" CVOutlookAddIn > "$log" 2>&1 &&
        scripts/build.sh "win$bits-symbols" CVOutlookAddIn >> "$log" 2>&1 || { tail -n 40 "$log" >&2; exit 1; }
    library=build/win$bits-symbols/src/addin/CVOutlookAddIn.dll
    shipped=build/win$bits-release/src/addin/CVOutlookAddIn.dll
    symbols=$dist/CVOutlookAddIn-$version-$bits.debug
    "$tools-objcopy" --only-keep-debug "$library" "$symbols"
    "$tools-strip" --strip-all -o "build/symbols-$bits.dll" "$library"
    scripts/compare-builds.py --sections "build/symbols-$bits.dll" "$shipped" ||
        { echo "symbols: the lines do not belong to the shipped library" >&2; exit 1; }
    for function in DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer; do
        offset=$("$tools-objdump" -p "$shipped" | python3 scripts/export-offset.py "$function")
        place=$(scripts/where.sh "$symbols" "$offset")
        source=${place##* at } line=${place##*:}
        # The first instruction may belong to a line that follows the function's name.
        sed -n "$((line - 4)),${line}p" "${source%:*}" | grep -q "$function" || { echo "symbols: $function begins at $place?" >&2; exit 1; }
        echo "$function, $bits bits: $offset is $place"
    done
done
