; Which Outlook there is, whether it runs, and where Corvella is.

; One version: its folder in the registry of one view.
!macro LookForOutlook VIEW VERSION
    ${If} $Outlook == ""
        SetRegView ${VIEW}
        ReadRegStr $0 HKLM "Software\Microsoft\Office\${VERSION}.0\Outlook\InstallRoot" "Path"
        ${If} $0 != ""
            StrCpy $Outlook ${VERSION}
        ${EndIf}
    ${EndIf}
!macroend

; A Click-to-Run Office has a machine's part of the registry of its own, in which its InstallRoot may stand alone.
!macro LookForClickToRun VIEW KEY VERSION
    ${If} $Outlook == ""
        SetRegView ${VIEW}
        ReadRegStr $0 HKLM "${KEY}\REGISTRY\MACHINE\Software\Microsoft\Office\${VERSION}.0\Outlook\InstallRoot" "Path"
        ${If} $0 == ""
            ReadRegStr $0 HKLM "${KEY}\REGISTRY\MACHINE\Software\Wow6432Node\Microsoft\Office\${VERSION}.0\Outlook\InstallRoot" "Path"
        ${EndIf}
        ${If} $0 != ""
            StrCpy $Outlook ${VERSION}
        ${EndIf}
    ${EndIf}
!macroend

; Where no version has an InstallRoot, "Outlook.Application.16" still tells of one.
Function FindOutlook
    StrCpy $Outlook ""
    !insertmacro LookForOutlook 64 16
    !insertmacro LookForOutlook 32 16
    !insertmacro LookForOutlook 64 15
    !insertmacro LookForOutlook 32 15
    !insertmacro LookForOutlook 64 14
    !insertmacro LookForOutlook 32 14
    !insertmacro LookForOutlook 32 12
    !insertmacro LookForOutlook 32 11
    !insertmacro LookForOutlook 32 10
    !insertmacro LookForOutlook 32 9
    !insertmacro LookForClickToRun 64 "Software\Microsoft\Office\ClickToRun" 16
    !insertmacro LookForClickToRun 32 "Software\Microsoft\Office\ClickToRun" 16
    !insertmacro LookForClickToRun 64 "Software\Microsoft\Office\15.0\ClickToRun" 15
    !insertmacro LookForClickToRun 32 "Software\Microsoft\Office\15.0\ClickToRun" 15
    SetRegView 32
    ${If} $Outlook == ""
        ReadRegStr $0 HKCR "Outlook.Application\CurVer" ""
        ${If} $0 != ""
            StrCpy $Outlook $0 "" 20  ; behind "Outlook.Application."
        ${EndIf}
    ${EndIf}
    ${If} $Outlook == ""
    ${AndIf} ${FileExists} "$LOCALAPPDATA\Microsoft\WindowsApps\olk.exe"
        StrCpy $Outlook "new"
    ${EndIf}
    ClearErrors
    Call LookWhetherOutlookRuns
FunctionEnd

!macro RunningFunction PREFIX
; $Running becomes 1 where a process is called OUTLOOK.EXE.
Function ${PREFIX}LookWhetherOutlookRuns
    StrCpy $Running 0
    System::Call "kernel32::CreateToolhelp32Snapshot(i 2, i 0) p.r1"
    System::Alloc 556  ; PROCESSENTRY32W of a 32-bit program
    Pop $2
    System::Call "*$2(i 556)"
    System::Call "kernel32::Process32FirstW(p r1, p r2) i.r3"
    ${DoWhile} $3 <> 0
        System::Call "*$2(i, i, i, p, i, i, i, i, i, &w260 .r4)"
        ${If} $4 == "OUTLOOK.EXE"  ; compared without regard to case
            StrCpy $Running 1
            ${ExitDo}
        ${EndIf}
        System::Call "kernel32::Process32NextW(p r1, p r2) i.r3"
    ${Loop}
    System::Free $2
    System::Call "kernel32::CloseHandle(p r1)"
FunctionEnd
!macroend
!insertmacro RunningFunction ""
!insertmacro RunningFunction "un."

; Outlook remembers of the ribbon of an add-in that it was valid; a new version may have another one.
!macro RibbonChecksFunction PREFIX
Function ${PREFIX}ForgetRibbonChecks
    StrCpy $0 14
    StrLen $5 "${PROGID}."
    ${DoWhile} $0 <= 16
        StrCpy $1 "Software\Microsoft\Office\$0.0\Common\CustomUIValidationCache"
        StrCpy $2 0
        ${Do}
            EnumRegValue $3 HKCU $1 $2
            ${If} $3 == ""
                ${ExitDo}
            ${EndIf}
            StrCpy $4 $3 $5
            ${If} $4 == "${PROGID}."
                DeleteRegValue HKCU $1 $3
            ${Else}
                IntOp $2 $2 + 1
            ${EndIf}
        ${Loop}
        IntOp $0 $0 + 1
    ${Loop}
    ClearErrors
FunctionEnd
!macroend
!insertmacro RibbonChecksFunction ""
!insertmacro RibbonChecksFunction "un."

; What Outlook itself has written down about the add-in for this user, and would remember of the next one.
Function un.ForgetOutlooksNotes
    Call un.ForgetRibbonChecks
    StrCpy $0 9
    ${DoWhile} $0 <= 16
        StrCpy $1 "Software\Microsoft\Office\$0.0\Outlook"
        DeleteRegKey HKCU "$1\Addins\${PROGID}"
        DeleteRegValue HKCU "$1\AddInLoadTimes" "${PROGID}"
        DeleteRegValue HKCU "$1\Resiliency\CrashingAddinList" "${PROGID}"
        DeleteRegValue HKCU "$1\Resiliency\DoNotDisableAddinList" "${PROGID}"
        DeleteRegValue HKCU "$1\Resiliency\AddinList" "${PROGID}"
        DeleteRegValue HKCU "$1\Resiliency\NotificationReminderAddinData" "${PROGID}"
        DeleteRegValue HKCU "$1\Resiliency\NotificationReminderAddinData" "${PROGID}\dtype"
        IntOp $0 $0 + 1
    ${Loop}
    ClearErrors
FunctionEnd

; $Corvella stays as the command line has it; else it is the registered folder that really holds Corvella.exe.
Function FindCorvella
    ${If} $Corvella != ""
        Return
    ${EndIf}
    SetRegView 32
    ReadRegStr $0 HKCU "${CORVELLA_KEY}" "Path"
    ${IfNot} ${FileExists} "$0\Corvella.exe"
        ReadRegStr $0 HKLM "${CORVELLA_KEY}" "Path"
    ${EndIf}
    ${IfNot} ${FileExists} "$0\Corvella.exe"
    ${AndIf} ${RunningX64}
        SetRegView 64
        ReadRegStr $0 HKLM "${CORVELLA_KEY}" "Path"
        SetRegView 32
    ${EndIf}
    ${If} ${FileExists} "$0\Corvella.exe"
        StrCpy $Corvella $0
    ${EndIf}
    ClearErrors
FunctionEnd
