; The log, Corvella-Outlook-setup.log in the folder of temporary files, and the steps at which tests make the setup fail.

!macro LogIt TEXT
    Push "${TEXT}"
    !ifdef __UNINSTALL__
        Call un.WriteLog
    !else
        Call WriteLog
    !endif
!macroend
!define Log "!insertmacro LogIt"

!macro LogFunctions PREFIX
Function ${PREFIX}OpenLog
    StrCpy $LogFile "$TEMP\Corvella-Outlook-setup.log"
    FileOpen $0 $LogFile w
    FileClose $0
    ClearErrors
FunctionEnd

Function ${PREFIX}WriteLog
    Exch $0
    Push $1
    DetailPrint $0
    ClearErrors  ; of what is being told
    FileOpen $1 $LogFile a
    ${IfNot} ${Errors}
        FileSeek $1 0 END
        FileWriteUTF16LE /BOM $1 "$0$\r$\n"
        FileClose $1
    ${EndIf}
    ClearErrors
    Pop $1
    Pop $0
FunctionEnd

; On the console of whoever started a silent setup, where there is one.
Function ${PREFIX}SayWhereTheLogIs
    ${IfNot} ${Silent}
        DetailPrint "$LogFile"
        Return
    ${EndIf}
    System::Call "kernel32::AttachConsole(i -1)"
    System::Call "kernel32::GetStdHandle(i -11) p.r0"
    ${If} $0 P> 0
        FileWrite $0 "$LogFile$\r$\n"
    ${EndIf}
    ClearErrors
FunctionEnd
!macroend
!insertmacro LogFunctions ""
!insertmacro LogFunctions "un."

; Ends the installation; .onInstFailed puts back what was there.
!macro FailNow TEXT
    StrCpy $Failure "${TEXT}"
    Abort "$Failure"
!macroend
!define Fail "!insertmacro FailNow"

; For tests: /FailAt=STEP fails after that step, /FailAt=STEP:wait stays there until it is killed.
!macro FailingStep STEP
    ${If} $FailAt == "${STEP}"
        ${Fail} "asked to fail after ${STEP}"
    ${ElseIf} $FailAt == "${STEP}:wait"
        ${Log} "waiting after ${STEP}"
        Sleep 600000
    ${EndIf}
!macroend
!define Failing "!insertmacro FailingStep"
