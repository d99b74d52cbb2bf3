#!/usr/bin/env bash
# Takes pictures of the setup's pages in four languages, into build/screens/setup, and puts the page that asks for the
# scope into docs/pictures/setup.png. A person looks at them. It installs and uninstalls in this checkout's Wine prefix.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
convert=$(command -v convert-im6.q16 || command -v convert)
setup=$(ls dist/Corvella-Outlook-AddIn-*-setup.exe) || { echo "setup-screens: first make setup" >&2; exit 1; }
. scripts/wine-env.sh
. scripts/period-look.sh
screens=build/screens/setup
mkdir -p "$screens" docs/pictures
cv_paint_desktop
outlook='HKLM\Software\Microsoft\Office\11.0\Outlook\InstallRoot'  # the pages speak to somebody who has it
wine reg add "$outlook" /v Path /d 'C:\Outlook\' /f /reg:32 > /dev/null
trap 'wine reg delete "$outlook" /f /reg:32 > /dev/null 2>&1' EXIT

page() {  # page NAME: the window with the focus, once it has drawn itself; then the next one
    sleep 3
    cv_take_picture "$screens/$1.png"
    "$convert" "$screens/$1.png" -bordercolor '#3a6ea5' -border 1x1 -fuzz 1% -trim +repage "$screens/$1.png"
    xdotool key "${2:-Return}"
}

for language in 1033-English 1031-Deutsch 1045-Polski 1029-Cesky; do
    name=${language#*-}
    wine "$setup" "/LANG=${language%%-*}" &
    sleep 6
    for part in licence scope folder corvella; do page "$name-$part"; done
    sleep 5
    page "$name-finished"
    wait
    wine "$WINEPREFIX/drive_c/users/$(id -un)/AppData/Local/Programs/Corvella for Outlook/Uninstall.exe" "/LANG=${language%%-*}" &
    sleep 6
    page "$name-uninstall"
    page "$name-uninstalled"
    wait
done
"$convert" "$screens/English-scope.png" -define png:exclude-chunks=date,time docs/pictures/setup.png
ls "$screens"
