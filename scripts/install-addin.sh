# To be sourced: builds the programs and installs the add-in in the private Wine prefix, as an installer would.
#
#   cv_install  the folder of Corvella and the add-in (C:\Corvella), as a path of this machine
#   cv_outlook  the windowed Outlook stand-in
scripts/build.sh win32-release CVOutlookAddIn OutlookStandIn standin_corvella > build/build.log 2>&1 || { tail -n 40 build/build.log; return 1; }
. scripts/wine-env.sh
cv_install=$WINEPREFIX/drive_c/Corvella
cv_outlook=$(find "$PWD/build/win32-release" -name OutlookStandIn.exe | head -n 1)
mkdir -p "$cv_install"
cp "$(find build/win32-release -name CVOutlookAddIn.dll | head -n 1)" \
   "$(find build/win32-release -name Corvella.exe | head -n 1)" lang/*.lng "$cv_install/"
wine 'C:\windows\syswow64\regsvr32.exe' /s 'C:\Corvella\CVOutlookAddIn.dll' || { echo "regsvr32 failed" >&2; return 1; }
wine reg add 'HKCU\Software\Quillmark\Corvella' /v Path /d 'C:\Corvella' /f >/dev/null 2>&1
