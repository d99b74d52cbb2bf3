; The setup of Corvella for Outlook. scripts/setup.sh gathers the files and calls makensis with
;
;   STAGE    the folder with everything that is installed, and files.txt, the list of it; beside the folder lie
;            Files.nsh, which takes the files in that order, and Product.nsh, which holds the names under which the
;            add-in registers itself
;   OUTFILE  the setup
;   VERSION  major.minor.patch
;
; How files are replaced: everything is unpacked to ~new first; the file ~new\swap opens the exchange, in which each old
; file goes to the folder that it names and each new one to its place; deleting it closes the exchange. A setup that was
; ended in between leaves that file, and the next one puts the old files back before it begins (Files.nsh).
Unicode true
SetCompressor /SOLID lzma
SetDateSave off
RequestExecutionLevel user
ManifestDPIAware true
!include MUI2.nsh
!include x64.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh
!include nsDialogs.nsh
!include WinVer.nsh
!include "${STAGE}/../Product.nsh"
!include "${STAGE}/../Files.nsh"

!define NAME "Corvella for Outlook"
!define PUBLISHER "the Corvella developers"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\CVOutlookAddIn"
!define CORVELLA_KEY "Software\Quillmark\Corvella"
!define RUN_ONCE "Software\Microsoft\Windows\CurrentVersion\RunOnce"

; Exit codes, as docs/installing.md has them.
!define DONE 0
!define CANCELLED 1
!define FAILED 2
!define OUTLOOK_RUNS 3
!define WRONG_OUTLOOK 4

Name "${NAME}"
OutFile "${OUTFILE}"
BrandingText "${NAME} ${VERSION}"
ShowInstDetails hide
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey FileDescription "${NAME}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey LegalCopyright "(c) 2026 ${PUBLISHER}"

Var AllUsers     ; 1: for all users of the machine; 0: for this user
Var Force        ; 1: /Force, nothing that a person would be asked about stops a silent setup
Var FailAt       ; a step at which tests let the setup fail or stop: see Failing in Log.nsh
Var LogFile
Var Outlook      ; the version found (9 to 16), "new" where there is only the one without add-ins, or empty
Var Running      ; 1: Outlook runs
Var Corvella     ; the folder of Corvella.exe, or empty
Var OtherScope   ; where an installation of the other scope lies, or empty
Var OtherVersion
Var InstalledVersion  ; of this scope, or empty
Var OldFolder    ; where replaced files wait, inside $INSTDIR
Var Failure      ; what went wrong, for the log
Var Settings     ; 1: uninstalling takes the settings along
Var Offered      ; the folder that was offered last

!include "${__FILEDIR__}/Log.nsh"
!include "${__FILEDIR__}/Outlook.nsh"
!include "${__FILEDIR__}/Files.nsh"
!include "${__FILEDIR__}/Registration.nsh"
!include "${__FILEDIR__}/Pages.nsh"

!define MUI_ICON "${__FILEDIR__}/Corvella.ico"
!define MUI_UNICON "${__FILEDIR__}/Corvella.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${__FILEDIR__}/Wizard.bmp"
!define MUI_ABORTWARNING
!define MUI_CUSTOMFUNCTION_ABORT OnAbort
!define MUI_FINISHPAGE_TEXT_LARGE
!define MUI_FINISHPAGE_TEXT "$(FinishText)"
!insertmacro MUI_PAGE_LICENSE "${STAGE}/LICENSE.txt"
Page custom ScopePage ScopePageLeave
!insertmacro MUI_PAGE_DIRECTORY
Page custom CorvellaPage CorvellaPageLeave
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
UninstPage custom un.ConfirmPage un.ConfirmPageLeave
!insertmacro MUI_UNPAGE_INSTFILES

; NSIS takes the language of Windows, English where it has none of these.
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE Czech
!insertmacro MUI_LANGUAGE German
!insertmacro MUI_LANGUAGE Spanish
!insertmacro MUI_LANGUAGE French
!insertmacro MUI_LANGUAGE Dutch
!insertmacro MUI_LANGUAGE Polish
!insertmacro MUI_LANGUAGE PortugueseBR
!include /CHARSET=UTF8 "${__FILEDIR__}/texts/English.nsh"
!include /CHARSET=UTF8 "${__FILEDIR__}/texts/Czech.nsh"
!include /CHARSET=UTF8 "${__FILEDIR__}/texts/German.nsh"
!include /CHARSET=UTF8 "${__FILEDIR__}/texts/Spanish.nsh"
!include /CHARSET=UTF8 "${__FILEDIR__}/texts/French.nsh"
!include /CHARSET=UTF8 "${__FILEDIR__}/texts/Dutch.nsh"
!include /CHARSET=UTF8 "${__FILEDIR__}/texts/Polish.nsh"
!include /CHARSET=UTF8 "${__FILEDIR__}/texts/PortugueseBR.nsh"

; --- Start ---

Function ReadOptions
    ${GetParameters} $0
    ${GetOptions} $0 "/LANG=" $1
    ${IfNot} ${Errors}
        StrCpy $LANGUAGE $1
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/AllUsers" $1
    ${IfNot} ${Errors}
        StrCpy $AllUsers 1
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/CurrentUser" $1
    ${IfNot} ${Errors}
        StrCpy $AllUsers 0
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/Force" $1
    ${IfNot} ${Errors}
        StrCpy $Force 1
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/Corvella=" $Corvella
    ClearErrors
    ${GetOptions} $0 "/FailAt=" $FailAt
    ClearErrors
FunctionEnd

; The folder that is offered: the one of an earlier installation of this scope, else the usual one.
Function ChooseFolder
    StrCpy $InstalledVersion ""
    StrCpy $OtherVersion ""
    StrCpy $OtherScope ""
    SetRegView 32
    ${If} $AllUsers = 1
        SetShellVarContext all
        ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
        ReadRegStr $InstalledVersion HKLM "${UNINSTALL_KEY}" "DisplayVersion"
        ReadRegStr $OtherScope HKCU "${UNINSTALL_KEY}" "InstallLocation"
        ReadRegStr $OtherVersion HKCU "${UNINSTALL_KEY}" "DisplayVersion"
        StrCpy $1 "$PROGRAMFILES\${NAME}"
        ${If} ${RunningX64}
            StrCpy $1 "$PROGRAMFILES64\${NAME}"
        ${EndIf}
    ${Else}
        SetShellVarContext current
        ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
        ReadRegStr $InstalledVersion HKCU "${UNINSTALL_KEY}" "DisplayVersion"
        ReadRegStr $OtherScope HKLM "${UNINSTALL_KEY}" "InstallLocation"
        ReadRegStr $OtherVersion HKLM "${UNINSTALL_KEY}" "DisplayVersion"
        StrCpy $1 "$LOCALAPPDATA"
        ${If} $1 == ""
            StrCpy $1 "$APPDATA"
        ${EndIf}
        StrCpy $1 "$1\Programs\${NAME}"
    ${EndIf}
    ClearErrors
    ; /D= and a folder that a person has typed stay; what this function offered before does not.
    ${If} $INSTDIR == ""
    ${OrIf} $INSTDIR == $Offered
        StrCpy $INSTDIR $1
        ${If} $0 != ""
            StrCpy $INSTDIR $0
        ${EndIf}
        StrCpy $Offered $INSTDIR
    ${EndIf}
FunctionEnd

; What a setup that nobody watches decides by its options, before it has changed anything.
Function DecideSilently
    ${If} $AllUsers = 1
        UserInfo::GetAccountType
        Pop $0
        ${If} $0 != "Admin"
            ${Log} "For all users an administrator has to run it."
            SetErrorLevel ${FAILED}
            Call SayWhereTheLogIs
            Abort
        ${EndIf}
    ${EndIf}
    ${If} $Force = 1
        Return
    ${EndIf}
    ${If} $Outlook == ""
    ${OrIf} $Outlook == "new"
        ${If} $Outlook == "new"
            ${Log} "There is only the new Outlook, which loads no COM add-ins. /Force installs all the same."
        ${Else}
            ${Log} "There is no Outlook. /Force installs all the same."
        ${EndIf}
        SetErrorLevel ${WRONG_OUTLOOK}
        Call SayWhereTheLogIs
        Abort
    ${EndIf}
    ${If} $InstalledVersion != ""
        ${VersionCompare} "$InstalledVersion" "${VERSION}" $0
        ${If} $0 = 1
            ${Log} "Version $InstalledVersion is newer. /Force installs the older one all the same."
            SetErrorLevel ${FAILED}
            Call SayWhereTheLogIs
            Abort
        ${EndIf}
    ${EndIf}
FunctionEnd

Function .onInit
    StrCpy $AllUsers 0
    StrCpy $Force 0
    Call OpenLog
    Call ReadOptions
    Call ChooseFolder
    Call FindOutlook
    Call FindCorvella
    ${Log} "${NAME} ${VERSION}: all users $AllUsers, Outlook $Outlook, installed $InstalledVersion"
    ${If} ${Silent}
        Call DecideSilently
    ${EndIf}
FunctionEnd

; --- Installing ---

Section
    AddSize ${SIZE}
    ${Log} "Installing to $INSTDIR"
    ${If} $OtherScope != ""
        ${Log} "Beside it version $OtherVersion is installed in $OtherScope, for the other scope."
    ${EndIf}
    ${Failing} "start"
    Call UndoInterrupted
    Call Unpack
    ${Failing} "unpack"
    Call RememberRegistration
    Call Swap
    ${Failing} "swap"
    Call Register
    ${Failing} "register"
    Call WriteUninstallEntry
    ${Failing} "entry"
    Call TakeOver
    Call CloseSwap
    Call ForgetRegistration
    Call ForgetRibbonChecks
    Call WriteShortcut
    SetErrorLevel ${DONE}
    ${If} $Running = 1
        ${Log} "Outlook runs: it takes the new version at its next start."
    ${EndIf}
    ${Log} "Done."
    Call SayWhereTheLogIs
SectionEnd

Function .onInstFailed
    ${Log} "Failed: $Failure"
    Call PutRegistrationBack
    Call UndoSwap
    SetErrorLevel ${FAILED}
    ${Log} "What was there is back."
    Call SayWhereTheLogIs
FunctionEnd

Function OnAbort
    SetErrorLevel ${CANCELLED}
    ${If} $Running = 2
        SetErrorLevel ${OUTLOOK_RUNS}
    ${EndIf}
FunctionEnd

!include "${__FILEDIR__}/Uninstall.nsh"
