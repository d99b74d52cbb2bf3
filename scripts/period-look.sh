# To be sourced after wine-env.sh; then, before the windows,  cv_paint_desktop,  and  cv_take_picture file.png  takes a
# picture of the display.
#
# Windows of this checkout's prefix look as those of 2001 did, for pictures of them.
#
# Without a window manager on the display (the private Xvfb has none) windows would have no frames, so Wine draws them;
# and the colours are those that Windows 2000 and the classic scheme of XP brought along. Done once a prefix.
if [ ! -e "$WINEPREFIX/.period-look" ]; then
    cv_look=$(mktemp --suffix=.reg)
    cat > "$cv_look" <<'REG'
REGEDIT4

[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\ThemeManager]
"ThemeActive"="0"

[HKEY_CURRENT_USER\Control Panel\Colors]
"ActiveBorder"="212 208 200"
"ActiveTitle"="10 36 106"
"AppWorkSpace"="128 128 128"
"Background"="58 110 165"
"ButtonAlternateFace"="181 181 181"
"ButtonDkShadow"="64 64 64"
"ButtonFace"="212 208 200"
"ButtonHilight"="255 255 255"
"ButtonLight"="212 208 200"
"ButtonShadow"="128 128 128"
"ButtonText"="0 0 0"
"GradientActiveTitle"="166 202 240"
"GradientInactiveTitle"="192 192 192"
"GrayText"="128 128 128"
"Hilight"="10 36 106"
"HilightText"="255 255 255"
"HotTrackingColor"="0 0 128"
"InactiveBorder"="212 208 200"
"InactiveTitle"="128 128 128"
"InactiveTitleText"="212 208 200"
"InfoText"="0 0 0"
"InfoWindow"="255 255 225"
"Menu"="212 208 200"
"MenuBar"="212 208 200"
"MenuHilight"="10 36 106"
"MenuText"="0 0 0"
"Scrollbar"="212 208 200"
"TitleText"="255 255 255"
"Window"="255 255 255"
"WindowFrame"="0 0 0"
"WindowText"="0 0 0"
REG
    cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null || true  # signs on captions
    wine regedit /S "$(winepath -w "$cv_look" 2>/dev/null)" >/dev/null 2>&1 && touch "$WINEPREFIX/.period-look"
    rm -f "$cv_look"
    wineserver -w
fi

# The display's background; windows that are there already are painted over until they draw themselves again.
cv_paint_desktop() { display -window root -size 1280x1024 xc:'#3a6ea5' >/dev/null 2>&1 || true; }

cv_take_picture() {
    sleep 0.2
    import -window root "$1"
}
