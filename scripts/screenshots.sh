#!/usr/bin/env bash
# Takes the pictures of the documentation: the options dialog in every language, and at other resolutions of the screen
# (dots an inch). Into docs/pictures, or scripts/screenshots.sh FOLDER.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
folder=${1:-docs/pictures}
mkdir -p "$folder"
scripts/build.sh win32-release options_picture > build/screenshots.log || { tail build/screenshots.log >&2; exit 1; }
. scripts/wine-env.sh
picture=build/win32-release/tests/pictures/options_picture.exe
bitmap=build/screenshot.bmp

# The resolution holds for the programs that are started while none runs.
set_dots() {
    wineserver -w
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f > /dev/null
    wineserver -w
}
trap 'set_dots 96' EXIT

take() {  # language, Outlook's version, name
    rm -f "$bitmap"
    wine "$picture" "$1" "$2" "$bitmap"
    convert-im6.q16 "$bitmap" -define png:exclude-chunks=date,time "$folder/$3.png"
}

set_dots 96
for language in English Deutsch Francais Espanol Portugues-BR Cesky Nederlands Polski; do
    take "$language" 11 "options-${language,,}"
done
take English 9 options-outlook2000
for dots in 120 144 192; do
    set_dots "$dots"
    take Deutsch 11 "options-$dots"
done
ls "$folder"
