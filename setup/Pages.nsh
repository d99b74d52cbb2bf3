; The pages that Modern UI does not have: for whom, where Corvella is, and what uninstalling takes along.

Var ForMe
Var ForAll
Var FolderField

!macro Label Y HEIGHT TEXT
    ${NSD_CreateLabel} 0 ${Y} 100% ${HEIGHT} "${TEXT}"
    Pop $0
!macroend

; --- For whom, and what stands in the way ---

Function ScopePage
    !insertmacro MUI_HEADER_TEXT "$(ScopeTitle)" "$(ScopeSubtitle)"
    nsDialogs::Create 1018
    Pop $0
    ${NSD_CreateFirstRadioButton} 0 0 100% 12u "$(ScopeMe)"
    Pop $ForMe
    ${NSD_CreateAdditionalRadioButton} 0 16u 100% 12u "$(ScopeAll)"
    Pop $ForAll
    ${If} $AllUsers = 1
        ${NSD_Check} $ForAll
    ${Else}
        ${NSD_Check} $ForMe
    ${EndIf}
    ${If} $OtherScope != ""
        !insertmacro Label 40u 24u "$(ScopeOther)"
    ${EndIf}
    ${If} $Outlook == "new"
        !insertmacro Label 70u 32u "$(OutlookOnlyNew)"
    ${ElseIf} $Outlook == ""
        !insertmacro Label 70u 32u "$(OutlookMissing)"
    ${EndIf}
    ${If} $Running = 1
        !insertmacro Label 106u 32u "$(OutlookRunning)"
    ${EndIf}
    nsDialogs::Show
FunctionEnd

; Windows asks for the administrator; the setup that it starts then goes on instead of this one.
Function Elevate
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 == "Admin"
        Return
    ${EndIf}
    ClearErrors
    ExecShell "runas" "$EXEPATH" "/AllUsers /LANG=$LANGUAGE"
    ${If} ${Errors}
        MessageBox MB_ICONEXCLAMATION "$(ScopeNoAdministrator)"
        Abort
    ${EndIf}
    SetErrorLevel ${DONE}
    Quit
FunctionEnd

Function ScopePageLeave
    ${NSD_GetState} $ForAll $0
    ${If} $0 = ${BST_CHECKED}
        StrCpy $AllUsers 1
        Call Elevate
    ${Else}
        StrCpy $AllUsers 0
    ${EndIf}
    Call ChooseFolder
    ${If} $InstalledVersion != ""
        ${VersionCompare} "$InstalledVersion" "${VERSION}" $0
        ${If} $0 = 1
            MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "$(Downgrade)" IDYES +2
            Abort
        ${EndIf}
    ${EndIf}
    Call LookWhetherOutlookRuns
    ${If} $Running = 1
        MessageBox MB_YESNOCANCEL|MB_ICONQUESTION "$(RunningQuestion)" IDYES goOn IDNO lookAgain
        StrCpy $Running 2
        SetErrorLevel ${OUTLOOK_RUNS}
        Quit
        lookAgain:
        Abort
        goOn:
    ${EndIf}
FunctionEnd

; --- Corvella's folder, only where none is registered ---

Function BrowseForCorvella
    nsDialogs::SelectFolderDialog "$(CorvellaTitle)" "$Corvella"
    Pop $0
    ${If} $0 != error
        ${NSD_SetText} $FolderField $0
    ${EndIf}
FunctionEnd

Function CorvellaPage
    ${If} ${FileExists} "$Corvella\Corvella.exe"
        Abort
    ${EndIf}
    !insertmacro MUI_HEADER_TEXT "$(CorvellaTitle)" "$(CorvellaSubtitle)"
    nsDialogs::Create 1018
    Pop $0
    !insertmacro Label 0 32u "$(CorvellaText)"
    ${NSD_CreateText} 0 40u 72% 13u "$Corvella"
    Pop $FolderField
    ${NSD_CreateButton} 75% 39u 25% 15u "$(BrowseButton)"
    Pop $0
    ${NSD_OnClick} $0 BrowseForCorvella
    nsDialogs::Show
FunctionEnd

Function CorvellaPageLeave
    ${NSD_GetText} $FolderField $Corvella
    ${If} $Corvella != ""
    ${AndIfNot} ${FileExists} "$Corvella\Corvella.exe"
        MessageBox MB_YESNO|MB_ICONQUESTION "$(CorvellaNotThere)" IDYES +2
        Abort
    ${EndIf}
FunctionEnd

; --- Uninstalling ---

Function un.ConfirmPage
    !insertmacro MUI_HEADER_TEXT "$(UninstallTitle)" "$(UninstallSubtitle)"
    nsDialogs::Create 1018
    Pop $0
    !insertmacro Label 0 24u "$(UninstallText)"
    ${NSD_CreateCheckBox} 0 32u 100% 12u "$(UninstallSettings)"
    Pop $ForMe
    ${If} $Settings = 1
        ${NSD_Check} $ForMe
    ${EndIf}
    !insertmacro Label 50u 32u "$(UninstallSettingsText)"
    ${If} $Running = 1
        !insertmacro Label 90u 24u "$(UninstallRunning)"
    ${EndIf}
    nsDialogs::Show
FunctionEnd

Function un.ConfirmPageLeave
    ${NSD_GetState} $ForMe $Settings
FunctionEnd
