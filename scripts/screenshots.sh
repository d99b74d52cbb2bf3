#!/usr/bin/env bash
# Makes the pictures of the documentation anew, in docs/pictures, from the running programs. All pictures of the forms,
# in every language and at several resolutions of the screen (dots an inch), come into build/screens, those on a
# desktop of 800x600 into build/screens/small.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
convert=$(command -v convert-im6.q16 || command -v convert)
scripts/contact-sheet.sh
crop() {  # crop folder-of-the-demo picture part name
    "$convert" "build/demo/$1/$2.png" -crop "$3" +repage -define png:exclude-chunks=date,time "docs/pictures/$4.png"
}
folder_of() { [ "$2" = English ] && echo "$1" || echo "$1-$2"; }  # folder_of version language

# For the manual, in each language that has one. Outlook 2007 shows item windows with a ribbon, 2016 all windows.
manuals=$(cd help && ls -d */ | tr -d /)
for language in $manuals; do
    for version in 2007 2016; do
        echo "screenshots: Outlook $version, $language"
        scripts/demo.sh "$version" "$language" > build/screens.log || { tail build/screens.log >&2; exit 1; }
    done
    crop "$(folder_of 2003 "$language")" menu 640x256+290+54 "menu-$language"
    crop "$(folder_of 2003 "$language")" contact 640x300+300+190 "contact-$language"
    crop "$(folder_of 2007 "$language")" contact 640x300+300+190 "contact2007-$language"
    crop "$(folder_of 2016 "$language")" menu 900x400+40+30 "ribbon-$language"
done
# For the README: the menu and below it what happens; a contact; the ribbon.
"$convert" build/demo/2003/menu.png \( -clone 0 -crop 900x300+40+30 +repage \) \( -clone 0 -crop 1204x262+38+762 +repage \) \
    -delete 0 -background '#3a6ea5' -append -define png:exclude-chunks=date,time docs/pictures/menu.png
crop 2003 contact 940x640+30+20 contact
cp docs/pictures/ribbon-English.png docs/pictures/ribbon.png
python3 scripts/draw-bitmaps.py

scripts/build.sh win32-release question_screens options_screens > build/screens.log ||
    { tail build/screens.log >&2; exit 1; }
. scripts/wine-env.sh
CV_LANGUAGES=$(python3 scripts/languages.py | tr '\n' ' ')
export CV_LANGUAGES
rm -rf build/screens

# Resolution and size of the desktop hold for programs that are started after all others have ended.
set_desktop() {  # set_desktop dots [width x height]
    wineserver -w
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f > /dev/null
    if [ -n "${2:-}" ]; then
        wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d pictures /f > /dev/null
        wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v pictures /d "$2" /f > /dev/null
    else
        wine reg delete 'HKCU\Software\Wine\Explorer' /v Desktop /f > /dev/null 2>&1 || true
    fi
    wineserver -w
}
make_pictures() {  # make_pictures folder program...
    export CV_PICTURES="build/screens/$1"
    mkdir -p "$CV_PICTURES"
    for program in "${@:2}"; do
        wine "build/win32-release/tests/screens/${program}_screens.exe" > build/screens.log ||
            { cat build/screens.log >&2; exit 1; }
    done
}
trap 'set_desktop 96' EXIT
for dots in 96 120 144 192; do
    set_desktop "$dots"
    make_pictures . question options
done
for dots in 96 120 144 192; do
    set_desktop "$dots" 800x600
    CV_LANGUAGES=Deutsch make_pictures small question options
done
set_desktop 96
for bitmap in build/screens/*.bmp build/screens/small/*.bmp; do
    "$convert" "$bitmap" -define png:exclude-chunks=date,time "${bitmap%.bmp}.png"
    rm "$bitmap"
done
for language in $manuals; do
    cp "build/screens/options-$language-96.png" "docs/pictures/options-$language.png"
    cp "build/screens/question-message-$language-96.png" "docs/pictures/question-$language.png"
done
cp build/screens/question-message-English-96.png docs/pictures/question.png

scripts/build.sh win32-release check_seeded check_parts > build/screens.log || { tail build/screens.log >&2; exit 1; }
. scripts/period-look.sh
ln -sfn "$PWD/build/win32-release/tests/check" "$WINEPREFIX/dosdevices/d:"  # so that the paths in the picture are short
CV_PICTURES="Z:$PWD/build/screens" python3 tests/check/seeded.py 'D:\check_seeded.exe' --no-skip "--test-case=picture*" \
    > build/screens.log || { tail build/screens.log >&2; exit 1; }
rm "$WINEPREFIX/dosdevices/d:"
"$convert" build/screens/check.bmp -define png:exclude-chunks=date,time docs/pictures/check.png
scripts/setup.sh > build/screens.log || { tail build/screens.log >&2; exit 1; }
scripts/setup-screens.sh
ls -l docs/pictures
