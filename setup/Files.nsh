; Files in and out of their places. files.txt lists what belongs to an installation, one path a line, below $INSTDIR.

!macro RemoveEmptyFolders
    !insertmacro RemoveListedFolders
    ${If} $AllUsers = 0
        RMDir "$LOCALAPPDATA\Programs"
    ${EndIf}
!macroend

; Runs ACTION (a function) for each line of a list; the path is in $R0 and may not be changed.
!macro ForEachListed LIST ACTION
    Push "${LIST}"
    GetFunctionAddress $R1 ${ACTION}
    !ifdef __UNINSTALL__
        Call un.WalkList
    !else
        Call WalkList
    !endif
!macroend
!define ForEachListed "!insertmacro ForEachListed"

!macro WalkFunction PREFIX
Function ${PREFIX}WalkList
    Pop $R2
    FileOpen $R3 $R2 r
    ${If} ${Errors}
        ClearErrors
        Return
    ${EndIf}
    ${Do}
        FileRead $R3 $R0
        ${If} ${Errors}
            ${ExitDo}
        ${EndIf}
        ${Do}  ; the line's end
            StrCpy $R4 $R0 1 -1
            ${If} $R4 != "$\r"
            ${AndIf} $R4 != "$\n"
                ${ExitDo}
            ${EndIf}
            StrCpy $R0 $R0 -1
        ${Loop}
        ${If} $R0 != ""
            Push $R1
            Push $R3
            Call $R1
            Pop $R3
            Pop $R1
        ${EndIf}
    ${Loop}
    ClearErrors
    FileClose $R3
FunctionEnd
!macroend
!insertmacro WalkFunction ""
!insertmacro WalkFunction "un."

; Everything to ~new. A disk that is full ends the setup here, with nothing changed.
Function Unpack
    RMDir /r "$INSTDIR\~new"
    ClearErrors
    SetOutPath "$INSTDIR\~new"
    ${If} ${Errors}
        ${Fail} "$INSTDIR cannot be written"
    ${EndIf}
    SetOverwrite try
    !insertmacro UnpackListedFiles
    ${IfNot} ${RunningX64}
        RMDir /r "$INSTDIR\~new\x64"
    ${EndIf}
    WriteUninstaller "$INSTDIR\~new\Uninstall.exe"
    ${If} ${Errors}
        ${Fail} "$INSTDIR cannot be written"
    ${EndIf}
    SetOutPath "$INSTDIR"
FunctionEnd

; The first of ~old, ~old2 ... that is not there: one of an earlier upgrade may still be in use.
Function ChooseOldFolder
    StrCpy $OldFolder "~old"
    StrCpy $0 1
    ${Do}
        RMDir /r "$INSTDIR\$OldFolder"
        ${IfNot} ${FileExists} "$INSTDIR\$OldFolder\*.*"
            ${ExitDo}
        ${EndIf}
        IntOp $0 $0 + 1
        StrCpy $OldFolder "~old$0"
    ${Loop}
    ClearErrors
FunctionEnd

; One file of the list: the old one out of the way, the new one to its place. A file that is in use can be renamed.
Function SwapOne
    ${IfNot} ${FileExists} "$INSTDIR\~new\$R0"
        Return  ; of the other bitness
    ${EndIf}
    ClearErrors
    ${If} ${FileExists} "$INSTDIR\$R0"
        ${GetParent} "$INSTDIR\$OldFolder\$R0" $0
        CreateDirectory $0
        Rename "$INSTDIR\$R0" "$INSTDIR\$OldFolder\$R0"
    ${EndIf}
    ${GetParent} "$INSTDIR\$R0" $0
    CreateDirectory $0
    Rename "$INSTDIR\~new\$R0" "$INSTDIR\$R0"
    ${If} ${Errors}
        StrCpy $Failure "$R0 cannot be replaced"
    ${EndIf}
FunctionEnd

Function Swap
    Call ChooseOldFolder
    ; The list is moved like the rest; its copy tells what to put back, whatever becomes of this setup.
    CopyFiles /SILENT "$INSTDIR\~new\files.txt" "$INSTDIR\~new\swap.txt"
    FileOpen $0 "$INSTDIR\~new\swap" w
    FileWrite $0 $OldFolder
    FileClose $0
    StrCpy $Failure ""
    ${ForEachListed} "$INSTDIR\~new\swap.txt" SwapOne
    ${If} $Failure != ""
        Abort $Failure
    ${EndIf}
FunctionEnd

; What is still in ~new was not reached. The rest goes back.
Function UndoOne
    ${If} ${FileExists} "$INSTDIR\~new\$R0"
        ${IfNot} ${FileExists} "$INSTDIR\$OldFolder\$R0"
            Return
        ${EndIf}
    ${EndIf}
    Delete "$INSTDIR\$R0"
    ${If} ${FileExists} "$INSTDIR\$OldFolder\$R0"
        Rename "$INSTDIR\$OldFolder\$R0" "$INSTDIR\$R0"
    ${EndIf}
FunctionEnd

Function UndoSwap
    SetOutPath "$TEMP"
    ${If} ${FileExists} "$INSTDIR\~new\swap"
        FileOpen $0 "$INSTDIR\~new\swap" r
        FileRead $0 $OldFolder
        FileClose $0
        ${ForEachListed} "$INSTDIR\~new\swap.txt" UndoOne
        Delete "$INSTDIR\~new\swap"
        RMDir /r "$INSTDIR\$OldFolder"
    ${EndIf}
    RMDir /r "$INSTDIR\~new"
    !insertmacro RemoveEmptyFolders
    ClearErrors
FunctionEnd

Function UndoInterrupted
    InitPluginsDir
    ${If} ${FileExists} "$INSTDIR\~new\*.*"
        ${Log} "An earlier setup did not come to its end; what it left is put back first."
        Call PutRegistrationBack
        Call UndoSwap
        CreateDirectory "$INSTDIR"
    ${EndIf}
FunctionEnd

; Files of the older version that the new one does not have.
Function DeleteObsolete
    ${IfNot} ${FileExists} "$INSTDIR\$OldFolder\$R0"
        Delete "$INSTDIR\$R0"
    ${EndIf}
FunctionEnd

Function CloseSwap
    Delete "$INSTDIR\~new\swap"
    ; Whatever the old list names and the exchange did not move is of the older version alone.
    ${ForEachListed} "$INSTDIR\$OldFolder\files.txt" DeleteObsolete
    RMDir /r "$INSTDIR\~new"
    DeleteRegValue HKCU "${RUN_ONCE}" "CVOutlookAddIn"
    ${If} $AllUsers = 1
        RMDir /r /REBOOTOK "$INSTDIR\$OldFolder"
    ${Else}  ; the list of what goes at the restart is the administrator's
        RMDir /r "$INSTDIR\$OldFolder"
        ${If} ${FileExists} "$INSTDIR\$OldFolder\*.*"
            WriteRegStr HKCU "${RUN_ONCE}" "CVOutlookAddIn" \
                'cmd.exe /d /c rmdir /s /q "$INSTDIR\$OldFolder"'
        ${EndIf}
    ${EndIf}
    ClearErrors
FunctionEnd
