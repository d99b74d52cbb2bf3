; The class in the view of each DLL, the add-in key that Outlook reads, the entry in Apps and Features, all in the hive of
; one scope. What the add-in's own registration (regsvr32) writes is the same, so that either can take over from the other.

!define CLASS_KEY "Software\Classes\CLSID\${CLSID}"
!define PROGRAM_KEY "Software\Classes\${PROGID}"
!define ADDIN_KEY "Software\Microsoft\Office\Outlook\Addins\${PROGID}"

; The registration as it was before, whole keys below this one, until the setup has come to its end. The value "complete"
; is written last: a copy without it is of a setup that had changed nothing yet.
!define BEFORE "Software\CVOutlookAddIn Setup"

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

!macro DeleteEmptyOffice ROOT
    DeleteRegKey /ifempty ${ROOT} "Software\Microsoft\Office\Outlook\Addins"
    DeleteRegKey /ifempty ${ROOT} "Software\Microsoft\Office\Outlook"
    DeleteRegKey /ifempty ${ROOT} "Software\Microsoft\Office"
!macroend

!macro DeleteAddIn ROOT VIEW
    SetRegView ${VIEW}
    DeleteRegKey ${ROOT} "${ADDIN_KEY}"
    !insertmacro DeleteEmptyOffice ${ROOT}
!macroend

; The machine's part has a value for the add-in of each bitness.
!macro WriteCorvellasFolder ROOT FOLDER
    ${If} ${RunningX64}
        SetRegView 64
        WriteRegStr ${ROOT} "${CORVELLA_KEY}" "Path" "${FOLDER}"
    ${EndIf}
    SetRegView 32
    WriteRegStr ${ROOT} "${CORVELLA_KEY}" "Path" "${FOLDER}"
!macroend

!macro DeleteCorvellasFolderIn ROOT VIEW
    SetRegView ${VIEW}
    DeleteRegValue ${ROOT} "${CORVELLA_KEY}" "Path"
    DeleteRegKey /ifempty ${ROOT} "${CORVELLA_KEY}"
    DeleteRegKey /ifempty ${ROOT} "Software\Quillmark"
!macroend

!macro DeleteCorvellasFolder ROOT
    ${If} ${RunningX64}
        !insertmacro DeleteCorvellasFolderIn ${ROOT} 64
    ${EndIf}
    !insertmacro DeleteCorvellasFolderIn ${ROOT} 32
!macroend

; Windows has the machine's list of programs in any case, the user's only with the first entry.
!macro DeleteEmptyList ROOT
    ${If} "${ROOT}" == "HKCU"
        DeleteRegKey /ifempty HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall"
    ${EndIf}
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

!define HANDLE_HKCU 0x80000001
!define HANDLE_HKLM 0x80000002
!define VIEW_32 0  ; what a 32-bit program sees by itself
!define VIEW_64 0x100
!define READ 0x20019
!define WRITE 0x20006

; Copies a key with everything below it, where there is one. $R9 becomes 1 where that fails.
!macro CopyKey ROOT FROM_VIEW FROM TO_VIEW TO
    System::Call 'advapi32::RegOpenKeyExW(p ${HANDLE_${ROOT}}, w "${FROM}", i 0, i ${READ}|${VIEW_${FROM_VIEW}}, *p 0 r1) i.r0'
    ${If} $0 = 0
        System::Call 'advapi32::RegCreateKeyExW(p ${HANDLE_${ROOT}}, w "${TO}", i 0, p 0, i 0, \
            i ${READ}|${WRITE}|${VIEW_${TO_VIEW}}, p 0, *p 0 r2, p 0) i.r0'
        ${If} $0 = 0
            System::Call 'shlwapi::SHCopyKeyW(p r1, p 0, p r2, i 0) i.r0'
            System::Call 'advapi32::RegCloseKey(p r2)'
        ${EndIf}
        System::Call 'advapi32::RegCloseKey(p r1)'
        ${If} $0 <> 0
            StrCpy $R9 1
        ${EndIf}
    ${EndIf}
!macroend

!macro RememberView ROOT VIEW
    !insertmacro CopyKey ${ROOT} ${VIEW} "${CLASS_KEY}" 32 "${BEFORE}\class ${VIEW}"
    !insertmacro CopyKey ${ROOT} ${VIEW} "${PROGRAM_KEY}" 32 "${BEFORE}\program ${VIEW}"
    !insertmacro CopyKey ${ROOT} ${VIEW} "${ADDIN_KEY}" 32 "${BEFORE}\add-in ${VIEW}"
!macroend

!macro RememberIn ROOT
    StrCpy $R9 0
    SetRegView 32
    DeleteRegKey ${ROOT} "${BEFORE}"
    !insertmacro RememberView ${ROOT} 32
    ${If} ${RunningX64}
        !insertmacro RememberView ${ROOT} 64
    ${EndIf}
    !insertmacro CopyKey ${ROOT} 32 "${UNINSTALL_KEY}" 32 "${BEFORE}\entry"
    ClearErrors
    WriteRegDWORD ${ROOT} "${BEFORE}" "complete" 1
    ${If} ${Errors}
    ${OrIf} $R9 = 1
        DeleteRegKey ${ROOT} "${BEFORE}"
        ${Fail} "the registry refuses the copy of what is registered"
    ${EndIf}
!macroend

; A key as it was, or no key.
!macro PutKeyBack ROOT VIEW KEY COPY
    SetRegView ${VIEW}
    DeleteRegKey ${ROOT} "${KEY}"
    SetRegView 32
    !insertmacro CopyKey ${ROOT} 32 "${BEFORE}\${COPY}" ${VIEW} "${KEY}"
!macroend

!macro PutViewBack ROOT VIEW
    !insertmacro PutKeyBack ${ROOT} ${VIEW} "${CLASS_KEY}" "class ${VIEW}"
    !insertmacro PutKeyBack ${ROOT} ${VIEW} "${PROGRAM_KEY}" "program ${VIEW}"
    !insertmacro PutKeyBack ${ROOT} ${VIEW} "${ADDIN_KEY}" "add-in ${VIEW}"
    SetRegView ${VIEW}
    !insertmacro DeleteEmptyOffice ${ROOT}
    SetRegView 32
!macroend

; The view of 64 bits first: what the two share is written last for the other, as it was read.
!macro PutBackIn ROOT
    SetRegView 32
    ReadRegDWORD $0 ${ROOT} "${BEFORE}" "complete"
    ${If} $0 = 1
        ${If} ${RunningX64}
            !insertmacro PutViewBack ${ROOT} 64
        ${EndIf}
        !insertmacro PutViewBack ${ROOT} 32
        !insertmacro DeleteEmptyClasses
        !insertmacro PutKeyBack ${ROOT} 32 "${UNINSTALL_KEY}" "entry"
        !insertmacro DeleteEmptyList ${ROOT}
        ReadRegDWORD $0 ${ROOT} "${BEFORE}" "WrotePath"
        ${If} $0 = 1
            !insertmacro DeleteCorvellasFolder ${ROOT}
        ${EndIf}
    ${EndIf}
    DeleteRegKey ${ROOT} "${BEFORE}"
!macroend

Function RememberRegistration
    ${If} $AllUsers = 1
        !insertmacro RememberIn HKLM
    ${Else}
        !insertmacro RememberIn HKCU
    ${EndIf}
    ClearErrors
FunctionEnd

; Of this setup, or of one that was ended in the middle.
Function PutRegistrationBack
    ${If} $AllUsers = 1
        !insertmacro PutBackIn HKLM
    ${Else}
        !insertmacro PutBackIn HKCU
    ${EndIf}
    ClearErrors
FunctionEnd

Function ForgetRegistration
    SetRegView 32
    ${If} $AllUsers = 1
        DeleteRegKey HKLM "${BEFORE}"
    ${Else}
        DeleteRegKey HKCU "${BEFORE}"
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
FunctionEnd

Function TakeOver
    ${If} $AllUsers = 1
        !insertmacro TakeOverFromUser
    ${EndIf}
    ClearErrors
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
    ${If} ${Errors}
        ${Fail} "the registry refuses the entry in the list of programs"
    ${EndIf}
    ReadRegStr $0 ${ROOT} "${CORVELLA_KEY}" "Path"
    ClearErrors
    ${If} $0 == ""
    ${AndIf} $Corvella != ""
        WriteRegDWORD ${ROOT} "${UNINSTALL_KEY}" "WrotePath" 1
        WriteRegDWORD ${ROOT} "${BEFORE}" "WrotePath" 1
        !insertmacro WriteCorvellasFolder ${ROOT} "$Corvella"
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
    ${If} ${Errors}
        ${Fail} "the registry refuses Corvella's folder"
    ${EndIf}
FunctionEnd

; The check program in the Start menu of this scope. Last of all: without it everything else is as good.
!define SHORTCUTS "$SMPROGRAMS\${NAME}"
!macro UseStartMenuOfScope
    SetShellVarContext current
    ${If} $AllUsers = 1
        SetShellVarContext all
    ${EndIf}
!macroend

Function WriteShortcut
    !insertmacro UseStartMenuOfScope
    CreateDirectory "${SHORTCUTS}"
    SetOutPath "$INSTDIR"
    CreateShortcut "${SHORTCUTS}\Why is it not there.lnk" "$INSTDIR\CorvellaCheck.exe"
    SetOutPath "$TEMP"
    ClearErrors
FunctionEnd
