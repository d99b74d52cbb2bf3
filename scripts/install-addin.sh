# To be sourced, after cv_bits was set to 32 or 64: builds the programs and installs the add-in in the private Wine prefix,
# as an installer would.
#
# With cv_more_targets set, builds these too. Says what it does, a line a step.
#
#   cv_install  the folder of Corvella and the add-in (C:\Corvella), as a path of this machine
#   cv_outlook  the windowed Outlook stand-in, for a person or, after `. scripts/install-addin.sh OutlookDay`, with the day
#   cv_record   where the started Corvella notes each start, as a Windows path
#
# Then  cv_set_language NAME  writes the settings file that Corvella and the add-in share, and sets
#
#   cv_locale    the LC_ALL under which Wine has that language's Windows code page; it need not be installed
#   cv_codepage  its name
cv_target=${1:-OutlookStandIn}
cv_build=build/win$cv_bits-release
cv_regsvr32='C:\windows\syswow64\regsvr32.exe'
[ "$cv_bits" = 32 ] || cv_regsvr32='C:\windows\system32\regsvr32.exe'
. scripts/steps.sh
mkdir -p build
cv_step "building the add-in and the stand-ins" build/build.log \
    scripts/build.sh "win$cv_bits-release" CVOutlookAddIn "$cv_target" standin_corvella ${cv_more_targets:-} || return 1
[ -e build/wine/.ready ] || echo "   preparing Windows' stand-in, Wine (once, about 20 s) ..."
. scripts/wine-env.sh
cv_install=$WINEPREFIX/drive_c/Corvella
cv_outlook=$(find "$PWD/$cv_build" -name "$cv_target.exe" | head -n 1)
cv_record='C:\Corvella\Corvella.record.txt'
mkdir -p "$cv_install"
cp "$cv_build/src/addin/CVOutlookAddIn.dll" "$cv_build/standins/corvella/Corvella.exe" lang/*.lng "$cv_install/"
echo "   registering the add-in"
wine "$cv_regsvr32" /s 'C:\Corvella\CVOutlookAddIn.dll' || { echo "regsvr32 failed" >&2; return 1; }
wine reg add 'HKCU\Software\Quillmark\Corvella' /v Path /d 'C:\Corvella' /f >/dev/null 2>&1

# Each settings file is a profile that the options dialog offers.
cv_set_language() {
    local found
    found=$(python3 scripts/languages.py "$1") || return 1
    read -r cv_locale cv_codepage <<< "$found"
    rm -f "$cv_install"/*.ini
    printf '[Settings]\r\nLanguage=%s\r\n' "$1" | tee "$cv_install/corvella.ini" > "$cv_install/Office.ini"
    wine reg add 'HKCU\Software\Quillmark\Corvella' /v IniFiles /d 'C:\Corvella\' /f >/dev/null 2>&1
}
# Whether Wine draws the frames of the stand-in's windows (N), as on a display without a window manager.
cv_set_managed() {
    wine reg add "HKCU\\Software\\Wine\\AppDefaults\\$cv_target.exe\\X11 Driver" /v Managed /d "$1" /f >/dev/null 2>&1
}
