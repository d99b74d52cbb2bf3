# To be sourced: the private Wine prefix of this checkout and a display, both made when missing.
#
#   WINEPREFIX  build/wine; made once, as a copy of build/wine-fresh
#   WINEDEBUG   -all, unless set
#   DISPLAY     as it is (a person's own) with CV_DISPLAY=own, else a private Xvfb, which stays
#               for later commands of this checkout and is recorded in build/xvfb.display
cv_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEPREFIX="$cv_root/build/wine"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
export LC_ALL=C.UTF-8
mkdir -p "$cv_root/build"

cv_display_alive() { [ -n "$1" ] && [ -S "/tmp/.X11-unix/X${1#:}" ] && DISPLAY="$1" timeout 5 xdpyinfo >/dev/null 2>&1; }

cv_start_display() {
    local record="$cv_root/build/xvfb.display" number
    if cv_display_alive "$(cat "$record" 2>/dev/null)"; then
        DISPLAY=$(cat "$record")
        return
    fi
    rm -f "$record.new"
    # -displayfd lets the server choose a free number, so that checkouts do not meet.
    setsid Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$record.new" >/dev/null 2>&1 9>&- &
    for _ in $(seq 100); do
        number=$(cat "$record.new" 2>/dev/null || true)
        [ -n "$number" ] && break
        sleep 0.1
    done
    [ -n "$number" ] || { echo "wine-env: no display could be started" >&2; return 1; }
    DISPLAY=":$number"
    echo "$DISPLAY" > "$record"
}

# The prefix that is copied where something is to begin on a Windows that nothing has used yet; wineboot makes it once
# (about 20 s). Nothing ever works in it.
cv_make_fresh_prefix() {
    local fresh="$cv_root/build/wine-fresh" font
    [ ! -e "$fresh/.ready" ] || return 0
    rm -rf "$fresh"
    (
        export WINEPREFIX="$fresh"
        wineboot --init >/dev/null 2>&1 9>&- || true
        # A program that crashes shall end with a trace, not wait in a box for a person.
        wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1 9>&- || true
        # The private display has no window manager, for whose answer each window would wait two seconds.
        [ "${CV_DISPLAY:-}" = own ] ||
            wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1 9>&- || true
        wineserver -w
    )
    [ -e "$fresh/drive_c/windows/syswow64/kernel32.dll" ] || { echo "wine-env: the prefix could not be made" >&2; return 1; }
    # Debian's Wine does not find its own fonts. These two hold the signs on the buttons of windows and the dots of masked
    # fields; Tahoma stays away, whose letters come out narrower than Wine measures them.
    for font in marlett wingding; do ln -sfn "/usr/share/wine/fonts/$font.ttf" "$fresh/drive_c/windows/Fonts/$font.ttf"; done
    touch "$fresh/.ready"
}

# cv_copy_fresh_prefix FOLDER: Windows' files are hard links, which takes no space. Wine writes into a registry file that has
# a second link, so those are copied.
cv_copy_fresh_prefix() {
    local fresh="$cv_root/build/wine-fresh"
    mkdir -p "$1"
    cp -al "$fresh/drive_c" "$1/"
    cp -a "$fresh/dosdevices" "$fresh"/*.reg "$fresh/.update-timestamp" "$fresh/.ready" "$1/"
}

# One process at a time makes the prefixes and the display; the others wait for it.
exec 9>"$cv_root/build/wine.lock"
flock 9
if [ "${CV_DISPLAY:-}" != own ]; then
    cv_start_display
    export DISPLAY
fi
if [ ! -e "$WINEPREFIX/.ready" ]; then
    cv_make_fresh_prefix || exit 1
    rm -rf "$WINEPREFIX"
    cv_copy_fresh_prefix "$WINEPREFIX"
fi
flock -u 9
exec 9>&-
