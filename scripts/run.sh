#!/usr/bin/env bash
# Opens the Outlook stand-in with the add-in for a person to click in:
# scripts/run.sh [2000|2002|2003|2007|2010|2013|2016] [language] [32|64]
#
# DISPLAY in the environment says where: an X display; "vnc" for a private one that a VNC viewer shows; "picture" for a
# private one of which a picture is taken once the windows are there. Ends with the last window.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/outlook-version.sh
cv_read_version run "$@"

offer_other_ways() {
    cat >&2 <<'TEXT'
run: there is no display to open windows on. Without one there are:

    make run DISPLAY=vnc        windows on a private display, which a VNC viewer shows (localhost:5900)
    make run DISPLAY=picture    a picture of the windows, build/run.png
    make demo                   a whole day, with pictures of each step
TEXT
    exit 1
}
shown=${DISPLAY:-}
export CV_DISPLAY=own
case "$shown" in
    '') offer_other_ways ;;
    vnc | picture) CV_DISPLAY=private ;;
    *)
        timeout 10 xdpyinfo -display "$shown" > /dev/null 2>&1 || {
            echo "run: the display '$shown' does not let us in" >&2
            offer_other_ways
        }
        ;;
esac
if [ "$shown" = vnc ] && ! command -v x11vnc > /dev/null; then
    echo "run: installing x11vnc"
    apt-get install -y -qq x11vnc > /dev/null 2>&1 || { echo "run: x11vnc could not be installed; make run DISPLAY=picture needs none" >&2; exit 1; }
fi

echo "== Building and preparing (the first time some minutes)"
cv_more_targets=cv_help
. scripts/install-addin.sh OutlookStandIn || exit 1
# As web pages, for a browser; Wine by itself cannot show compiled help.
rm -f "$cv_install"/*.chm
cp -R "$cv_build/help/Manual" "$cv_install/"
. scripts/period-look.sh
if [ "$CV_DISPLAY" = own ]; then
    cv_set_managed Y
else
    cv_paint_desktop
    cv_set_managed N
fi
cv_set_language "$language"
# A stand-in that was ended from outside leaves the mark of an unclean end, about which the add-in would ask.
wine reg delete 'HKCU\Software\Quillmark\Corvella\OlAddIn' /v Active /f > /dev/null 2>&1 || true

# One of those that Wine hands a web page to.
find_browser() { for browser in xdg-open www-browser firefox konqueror dillo ''; do command -v "$browser" > /dev/null && break; done || true; }
find_browser
if [ -z "$browser" ] && [ "$shown" != picture ]; then
    echo "   installing a small browser for the manual, dillo"
    apt-get install -y -qq dillo > /dev/null 2>&1 || true
    find_browser
fi

# For as long as this runs, pages are the browser's; tests want a prefix where nothing is.
classes='HKLM\Software\Classes'
forget_pages() {
    wine reg delete "$classes\\.htm" /f > /dev/null 2>&1 || true
    wine reg delete "$classes\\CorvellaRunPage" /f > /dev/null 2>&1 || true
}
viewer=
at_end() { [ -z "$viewer" ] || kill "$viewer" 2> /dev/null || true; forget_pages; }
trap at_end EXIT
wine reg add "$classes\\.htm" /ve /d CorvellaRunPage /f > /dev/null 2>&1
wine reg add "$classes\\CorvellaRunPage\\shell\\open\\command" /ve /d 'C:\windows\system32\winebrowser.exe -nohome "%1"' /f > /dev/null 2>&1

explorers="the menu Corvella, left of Help, and the button Synchronize at the end of the toolbar"
contacts="Click the folder Contacts on the left: the toolbar gets one more button, Send to Phone. Select some contacts
     and click it."
items="Double-click a contact: its window has the button Save and Send to Phone."
case "$outlook" in
    2000) contacts="(The button Send to Phone does not come in the first window of Outlook 2000, but in a second one
     of File, New Window.)" ;;
    2007) items="Double-click a contact: its window has a ribbon, and Save and Send to Phone is on the tab Add-Ins." ;;
    201*)
        explorers="the group Corvella on the ribbon"
        contacts="Click the folder Contacts on the left, select some contacts and click Send to Phone on the ribbon, or in
     the menu of a right click."
        items="Double-click a contact: Save and Send to Phone is on the ribbon of its window."
        ;;
esac
cat <<TEXT

Outlook $outlook (a stand-in) with the add-in. What to try:

  1. In the large window: $explorers.
  2. $contacts
  3. $items
  4. Choose Add-In Options in the menu, and press F1 there: the folder of the manual opens, as Wine cannot show compiled help.
     Double-click AddInOutl.htm${browser:+ ($browser shows it)}.
  5. Below, "What happens" shows each call between Outlook and the add-in, and to the right what was started.

Corvella is a stand-in too: a program that notes what it was called with, and clears the lists.
Where things are: $cv_install (the add-in, its texts and manual),
                  $cv_install/Corvella.record.txt (what was started).
It ends when you close the last window of Outlook.

TEXT
[ -n "$browser" ] || echo "There is no browser here for the manual; it can be read in $cv_install/Manual/English/index.htm."

start=(env LC_ALL="$cv_locale" wine "$cv_outlook" /version "$outlook" /record "$cv_record")
case "$shown" in
    picture)
        "${start[@]}" &
        program=$!
        sleep 6
        cv_take_picture build/run.png
        kill "$program"
        echo "The picture: build/run.png"
        ;;
    vnc)
        x11vnc -display "$DISPLAY" -localhost -forever -shared -nopw -quiet > build/x11vnc.log 2>&1 &
        viewer=$!
        echo "Look at it with a VNC viewer: vncviewer localhost:5900"
        "${start[@]}"
        ;;
    *) "${start[@]}" ;;
esac
