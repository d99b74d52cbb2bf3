; The class in the view of each DLL, the add-in key that Outlook reads, the entry in Apps and Features, all in the hive of
; one scope. What the add-in's own registration (regsvr32) writes is the same, so that either can take over from the other.

!define CLASS_KEY "Software\Classes\CLSID\${CLSID}"
!define PROGRAM_KEY "Software\Classes\${PROGID}"
!define ADDIN_KEY "Software\Microsoft\Office\Outlook\Addins\${PROGID}"
!define RUN_ONCE "Software\Microsoft\Windows\CurrentVersion\RunOnce"

Var Class32      ; the DLL that was registered before, in each view; empty: none
Var Class64
Var Load32       ; LoadBehavior as it was; empty: no add-in key
Var Load64
Var HadEntry     ; 1: Apps and Features had an entry of this scope

!macro WriteClass ROOT VIEW LIBRARY
    SetRegView ${VIEW}
    WriteRegStr ${ROOT} "${CLASS_KEY}" "" "${PROGID}"
    WriteRegStr ${ROOT} "${CLASS_KEY}\InprocServer32" "" "${LIBRARY}"
    WriteRegStr ${ROOT} "${CLASS_KEY}\InprocServer32" "ThreadingModel" "Apartment"
    WriteRegStr ${ROOT} "${CLASS_KEY}\ProgID" "" "${PROGID}"
    WriteRegStr ${ROOT} "${PROGRAM_KEY}" "" "${PROGID}"
    WriteRegStr ${ROOT} "${PROGRAM_KEY}\CLSID" "" "${CLSID}"
!macroend

!macro WriteAddIn ROOT VIEW
    SetRegView ${VIEW}
    WriteRegStr ${ROOT} "${ADDIN_KEY}" "FriendlyName" "${FRIENDLY_NAME}"
    WriteRegStr ${ROOT} "${ADDIN_KEY}" "Description" "${DESCRIPTION}"
    WriteRegDWORD ${ROOT} "${ADDIN_KEY}" "LoadBehavior" ${LOAD_BEHAVIOR}
!macroend

!macro DeleteClass ROOT VIEW
    SetRegView ${VIEW}
    DeleteRegKey ${ROOT} "${CLASS_KEY}"
    DeleteRegKey ${ROOT} "${PROGRAM_KEY}"
!macroend

!macro DeleteAddIn ROOT VIEW
    SetRegView ${VIEW}
    DeleteRegKey ${ROOT} "${ADDIN_KEY}"
    DeleteRegKey /ifempty ${ROOT} "Software\Microsoft\Office\Outlook\Addins"
    DeleteRegKey /ifempty ${ROOT} "Software\Microsoft\Office\Outlook"
    DeleteRegKey /ifempty ${ROOT} "Software\Microsoft\Office"
!macroend

!macro DeleteEmptyClasses
    DeleteRegKey /ifempty HKCU "Software\Classes\CLSID"
    DeleteRegKey /ifempty HKCU "Software\Classes\Wow6432Node\CLSID"
    DeleteRegKey /ifempty HKCU "Software\Classes\Wow6432Node"
!macroend

; The user's part is one for both bitnesses but for CLSID; the machine's is split throughout.
; The 32-bit class comes last: Wine has one CLSID for both in the user's part, and its 32-bit programs shall find theirs.
!macro RegisterIn ROOT
    ${If} ${RunningX64}
        !insertmacro WriteClass ${ROOT} 64 "$INSTDIR\x64\CVOutlookAddIn.dll"
        !insertmacro WriteAddIn ${ROOT} 64
    ${EndIf}
    !insertmacro WriteClass ${ROOT} 32 "$INSTDIR\CVOutlookAddIn.dll"
    !insertmacro WriteAddIn ${ROOT} 32
    SetRegView 32
!macroend

!macro UnregisterIn ROOT
    !insertmacro DeleteClass ${ROOT} 32
    !insertmacro DeleteAddIn ${ROOT} 32
    ${If} ${RunningX64}
        !insertmacro DeleteClass ${ROOT} 64
        !insertmacro DeleteAddIn ${ROOT} 64
    ${EndIf}
    SetRegView 32
    !insertmacro DeleteEmptyClasses
    ClearErrors
!macroend

!macro RememberIn ROOT
    SetRegView 32
    ReadRegStr $Class32 ${ROOT} "${CLASS_KEY}\InprocServer32" ""
    ReadRegDWORD $Load32 ${ROOT} "${ADDIN_KEY}" "LoadBehavior"
    ReadRegStr $0 ${ROOT} "${UNINSTALL_KEY}" "DisplayName"
    StrCpy $HadEntry 0
    ${If} $0 != ""
        StrCpy $HadEntry 1
    ${EndIf}
    ${If} ${RunningX64}
        SetRegView 64
        ReadRegStr $Class64 ${ROOT} "${CLASS_KEY}\InprocServer32" ""
        ReadRegDWORD $Load64 ${ROOT} "${ADDIN_KEY}" "LoadBehavior"
        SetRegView 32
    ${EndIf}
    ClearErrors
!macroend

!macro PutBackOne ROOT VIEW CLASS LOAD
    ${If} ${CLASS} == ""
        !insertmacro DeleteClass ${ROOT} ${VIEW}
    ${Else}
        !insertmacro WriteClass ${ROOT} ${VIEW} ${CLASS}
    ${EndIf}
    ${If} ${LOAD} == ""
        !insertmacro DeleteAddIn ${ROOT} ${VIEW}
    ${Else}
        SetRegView ${VIEW}
        WriteRegDWORD ${ROOT} "${ADDIN_KEY}" "LoadBehavior" ${LOAD}
    ${EndIf}
!macroend

; The view of 64 bits first: what the two share is written last for the other, as it was read.
!macro PutBackIn ROOT
    ${If} ${RunningX64}
        !insertmacro PutBackOne ${ROOT} 64 $Class64 $Load64
    ${EndIf}
    !insertmacro PutBackOne ${ROOT} 32 $Class32 $Load32
    SetRegView 32
    !insertmacro DeleteEmptyClasses
    ${If} $HadEntry = 0
        DeleteRegKey ${ROOT} "${UNINSTALL_KEY}"
    ${EndIf}
!macroend

Var Remembered  ; 1: the registry may have to be put back

Function RememberRegistration
    ${If} $AllUsers = 1
        !insertmacro RememberIn HKLM
    ${Else}
        !insertmacro RememberIn HKCU
    ${EndIf}
    StrCpy $Remembered 1
FunctionEnd

Function PutRegistrationBack
    ${If} $Remembered != 1
        Return
    ${EndIf}
    ${If} $AllUsers = 1
        !insertmacro PutBackIn HKLM
    ${Else}
        !insertmacro PutBackIn HKCU
    ${EndIf}
    ClearErrors
FunctionEnd

; An installation for all users takes over from regsvr32, which an administrator may have run before: its entries of the
; administrator alone would hide the machine's.
!macro TakeOverFromUser
    SetRegView 32
    ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "DisplayName"
    ${If} $0 == ""
        !insertmacro UnregisterIn HKCU
    ${EndIf}
!macroend

Function Register
    ClearErrors
    ${If} $AllUsers = 1
        !insertmacro RegisterIn HKLM
    ${Else}
        !insertmacro RegisterIn HKCU
    ${EndIf}
    ${If} ${Errors}
        ${Fail} "the registry refuses the registration"
    ${EndIf}
    ${If} $AllUsers = 1
        !insertmacro TakeOverFromUser
    ${EndIf}
FunctionEnd

!macro WriteEntryIn ROOT SCOPE
    WriteRegStr ${ROOT} "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
    WriteRegStr ${ROOT} "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr ${ROOT} "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
    WriteRegStr ${ROOT} "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Uninstall.exe"
    WriteRegStr ${ROOT} "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr ${ROOT} "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe" /${SCOPE}'
    WriteRegStr ${ROOT} "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /${SCOPE} /S'
    WriteRegDWORD ${ROOT} "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
    WriteRegStr ${ROOT} "${UNINSTALL_KEY}" "Language" $LANGUAGE
    WriteRegDWORD ${ROOT} "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD ${ROOT} "${UNINSTALL_KEY}" "NoRepair" 1
    ; Corvella's folder is written where nobody has registered one, and remembered to be taken away again.
    ReadRegStr $0 ${ROOT} "${CORVELLA_KEY}" "Path"
    ${If} $0 == ""
    ${AndIf} $Corvella != ""
        WriteRegStr ${ROOT} "${CORVELLA_KEY}" "Path" "$Corvella"
        WriteRegDWORD ${ROOT} "${UNINSTALL_KEY}" "WrotePath" 1
    ${EndIf}
!macroend

Function WriteUninstallEntry
    SetRegView 32
    ClearErrors
    ${If} $AllUsers = 1
        !insertmacro WriteEntryIn HKLM AllUsers
    ${Else}
        !insertmacro WriteEntryIn HKCU CurrentUser
    ${EndIf}
    ClearErrors
FunctionEnd
