; Uninstalling: the files of the list, the registration of this scope, and on demand the settings.


; The language in which it was installed, unless /LANG= names another.
Function un.ChooseLanguage
    ${If} $AllUsers = 1
        ReadRegStr $1 HKLM "${UNINSTALL_KEY}" "Language"
    ${Else}
        ReadRegStr $1 HKCU "${UNINSTALL_KEY}" "Language"
    ${EndIf}
    ${If} $1 != ""
        StrCpy $LANGUAGE $1
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/LANG=" $1
    ${IfNot} ${Errors}
        StrCpy $LANGUAGE $1
    ${EndIf}
    ClearErrors
FunctionEnd

Function un.onInit
    StrCpy $AllUsers 0
    StrCpy $Settings 0
    Call un.OpenLog
    SetRegView 32
    ${GetParameters} $0
    ${GetOptions} $0 "/Settings" $1
    ${IfNot} ${Errors}
        StrCpy $Settings 1
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/AllUsers" $1
    ${IfNot} ${Errors}
        StrCpy $AllUsers 1
    ${EndIf}
    ClearErrors
    Call un.ChooseLanguage
    Call un.LookWhetherOutlookRuns
FunctionEnd

; A file that is in use goes to ~gone, which Windows removes later.
Function un.DeleteOne
    ClearErrors
    Delete "$INSTDIR\$R0"
    ${If} ${FileExists} "$INSTDIR\$R0"
        CreateDirectory "$INSTDIR\~gone"
        System::Call "kernel32::GetTickCount() i.r0"
        Rename "$INSTDIR\$R0" "$INSTDIR\~gone\$0-$R5"
        IntOp $R5 $R5 + 1
        ${Log} "$R0 is in use; Windows removes it later."
    ${EndIf}
    ClearErrors
FunctionEnd

; ~gone, and what upgrades left while a program used it.
Function un.RemoveLater
    StrCpy $2 ""
    FindFirst $0 $1 "$INSTDIR\~*"
    ${DoWhile} $1 != ""
        RMDir /r "$INSTDIR\$1"
        ${If} ${FileExists} "$INSTDIR\$1\*.*"
            StrCpy $2 '$2rmdir /s /q "$INSTDIR\$1" & '
            ${If} $AllUsers = 1
                RMDir /r /REBOOTOK "$INSTDIR\$1"
            ${EndIf}
        ${EndIf}
        FindNext $0 $1
    ${Loop}
    FindClose $0
    ${If} $2 != ""
        ${If} $AllUsers = 1
            RMDir /REBOOTOK "$INSTDIR"
        ${Else}  ; the list of what goes at the restart is the administrator's
            WriteRegStr HKCU "${RUN_ONCE}" "CVOutlookAddIn" 'cmd.exe /d /c $2rmdir "$INSTDIR"'
        ${EndIf}
    ${EndIf}
    ClearErrors
FunctionEnd

; The add-in's own settings always; what it shares with Corvella only where no Corvella is installed.
Function un.DeleteSettings
    DeleteRegKey HKCU "${CORVELLA_KEY}\OlAddIn"
    DeleteRegValue HKCU "${CORVELLA_KEY}\Debug" ""
    DeleteRegKey /ifempty HKCU "${CORVELLA_KEY}\Debug"
    ReadRegStr $0 HKCU "${CORVELLA_KEY}" "Path"
    ReadRegStr $1 HKLM "${CORVELLA_KEY}" "Path"
    ${If} ${FileExists} "$0\Corvella.exe"
    ${OrIf} ${FileExists} "$1\Corvella.exe"
        ${Log} "Corvella is installed: the settings that it shares stay."
        Return
    ${EndIf}
    DeleteRegKey HKCU "${CORVELLA_KEY}\Outlook"
    DeleteRegValue HKCU "${CORVELLA_KEY}\Settings" "SaveIn"
    DeleteRegKey /ifempty HKCU "${CORVELLA_KEY}\Settings"
    DeleteRegKey /ifempty HKCU "${CORVELLA_KEY}"
    DeleteRegKey /ifempty HKCU "Software\Quillmark"
    SetShellVarContext current
    Delete "$APPDATA\Corvella\corvella.ini"
    Delete "$APPDATA\Corvella\config.ini"
    Delete "$APPDATA\Corvella\CorvellaCheck *.reg"
    RMDir "$APPDATA\Corvella"
    ClearErrors
FunctionEnd

!macro UninstallFrom ROOT
    ReadRegDWORD $0 ${ROOT} "${UNINSTALL_KEY}" "WrotePath"
    ${If} $0 = 1
        !insertmacro DeleteCorvellasFolder ${ROOT}
    ${EndIf}
    !insertmacro UnregisterIn ${ROOT}
    DeleteRegKey ${ROOT} "${UNINSTALL_KEY}"
    !insertmacro DeleteEmptyList ${ROOT}
!macroend

Section Uninstall
    ${Log} "Uninstalling from $INSTDIR"
    ${IfNot} ${FileExists} "$INSTDIR\files.txt"
        ${Log} "There is no list of files: nothing was removed."
        SetErrorLevel ${FAILED}
        Abort
    ${EndIf}
    ${If} $AllUsers = 1
        !insertmacro UninstallFrom HKLM
    ${Else}
        !insertmacro UninstallFrom HKCU
    ${EndIf}
    !insertmacro UseStartMenuOfScope
    Delete "${SHORTCUTS}\Why is it not there.lnk"
    RMDir "${SHORTCUTS}"
    SetOutPath "$TEMP"
    InitPluginsDir
    CopyFiles /SILENT "$INSTDIR\files.txt" "$PLUGINSDIR\files.txt"
    StrCpy $R5 0
    ${ForEachListed} "$PLUGINSDIR\files.txt" un.DeleteOne
    ; The log that the add-in keeps beside its DLL.
    Delete "$INSTDIR\CorvellaAddIn.dbg.xml"
    Delete "$INSTDIR\x64\CorvellaAddIn.dbg.xml"
    DeleteRegValue HKCU "${RUN_ONCE}" "CVOutlookAddIn"
    Call un.RemoveLater
    Call un.ForgetOutlooksNotes
    !insertmacro RemoveEmptyFolders
    ${If} $Settings = 1
        Call un.DeleteSettings
    ${EndIf}
    SetErrorLevel ${DONE}
    ${Log} "Done."
    Call un.SayWhereTheLogIs
SectionEnd
