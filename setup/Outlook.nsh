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

; Click-to-Run keeps no InstallRoot on some machines; "Outlook.Application.16" is there in both cases.
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
    ${If} ${FileExists} "$0\Corvella.exe"
        StrCpy $Corvella $0
    ${EndIf}
    ClearErrors
FunctionEnd
