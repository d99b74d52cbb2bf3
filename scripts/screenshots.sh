#!/usr/bin/env bash
# Makes the pictures of the documentation anew, in docs/pictures, from the running programs. All pictures of the forms,
# in every language and at several resolutions of the screen (dots an inch), come into build/screens.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
convert=$(command -v convert-im6.q16 || command -v convert)
scripts/contact-sheet.sh
crop() { "$convert" "build/demo/2003/$1.png" -crop "$2" +repage -define png:exclude-chunks=date,time "docs/pictures/$1.png"; }
crop menu 900x300+40+30
crop contact 940x640+30+20
python3 scripts/draw-bitmaps.py

scripts/build.sh win32-release question_screens options_screens > build/screens.log ||
    { tail build/screens.log >&2; exit 1; }
. scripts/wine-env.sh
export CV_LANGUAGES="English Deutsch Francais Espanol Portugues-BR Cesky Nederlands Polski" CV_PICTURES=build/screens
rm -rf "$CV_PICTURES"
mkdir -p "$CV_PICTURES"

# The resolution holds for programs that are started after all others have ended.
set_dots() {
    wineserver -w
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f > /dev/null
    wineserver -w
}
trap 'set_dots 96' EXIT
for dots in 96 120 144 192; do
    set_dots "$dots"
    for program in question options; do
        wine "build/win32-release/tests/screens/${program}_screens.exe" > build/screens.log ||
            { cat build/screens.log >&2; exit 1; }
    done
done
for bitmap in "$CV_PICTURES"/*.bmp; do
    "$convert" "$bitmap" -define png:exclude-chunks=date,time "${bitmap%.bmp}.png"
    rm "$bitmap"
done
cp "$CV_PICTURES"/options-{English,Deutsch}-96.png docs/pictures/
ls -l docs/pictures
