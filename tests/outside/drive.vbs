' Drives Outlook from a process of its own, as any client may: opens a window, clicks what the add-in put into its
' menu and toolbar or onto its ribbon, and quits. Each line that it writes was read just then from Outlook, the registry
' or a file.
'
'     drive.vbs ProgID "file that Corvella records its starts in" [ProgID of the user]
'
' With a user, who clicks in Outlook's windows, it is the ribbon.
Option Explicit
Const contactsFolder = 10, inboxFolder = 6, taskItem = 3
Const patience = 10  ' seconds
Const lists = "HKCU\Software\Quillmark\Corvella\Outlook\"
Dim outlook, explorer, contacts
Dim files, recordFile, recordSize, record

Set files = CreateObject("Scripting.FileSystemObject")
recordFile = WScript.Arguments(1)
recordSize = 0
record = Array()

Set outlook = CreateObject(WScript.Arguments(0))
WScript.Echo "version: " & outlook.Version
WScript.Echo "windows: " & outlook.Explorers.Count

Set contacts = outlook.GetNamespace("MAPI").GetDefaultFolder(contactsFolder)
Set explorer = contacts.GetExplorer
explorer.Display
WScript.Echo "windows: " & outlook.Explorers.Count
WScript.Echo "opened: " & explorer.Caption

If WScript.Arguments.Count > 2 Then
    UseRibbon CreateObject(WScript.Arguments(2))
Else
    UseBars
End If

outlook.Quit
WScript.Echo "quit"

Sub UseBars
    Dim menuWindow, button
    WScript.Echo "its menu: " & EntriesOf(PopupOf(explorer))

    ' Outlook 2000 has the menu in its first window alone.
    Set menuWindow = explorer
    If PopupOf(explorer) Is Nothing Then Set menuWindow = outlook.Explorers.Item(1)
    WScript.Echo "menu: " & EntriesOf(PopupOf(menuWindow))

    EntryNamed(PopupOf(menuWindow), "Synchronize").Execute
    WScript.Echo "recorded: " & Recorded(1, "command=")

    Set explorer.CurrentFolder = outlook.GetNamespace("MAPI").GetDefaultFolder(inboxFolder)
    WScript.Echo "button in the inbox: " & TagsOf(explorer)
    Set explorer.CurrentFolder = contacts
    WScript.Echo "button in the contacts: " & TagsOf(explorer)
    Set button = explorer.CommandBars.FindControl(, , "107")
    WScript.Echo "selected: " & explorer.Selection.Item(1).FullName & ", " & explorer.Selection.Item(1).EntryID
    button.Execute
    WScript.Echo "recorded: " & Recorded(2, "command=")
    WScript.Echo "handed over: " & Recorded(2, "ChangedC=")
    WScript.Echo "list afterwards: '" & ClearedList("ChangedC") & "'"
End Sub

' The window that was opened last is in front: what the user does is done there.
Sub UseRibbon(user)
    Dim task
    WScript.Echo "in the contacts: " & Seen(user, "TabContacts_ButtonSendToPhone")
    WScript.Echo "synchronise: " & Seen(user, "TabContacts_Buttonsync")
    WScript.Echo "editor: " & Seen(user, "TabContacts_mEditor")
    WScript.Echo "unknown: " & Seen(user, "TabContacts_Nothing")
    WScript.Echo "clicked: " & user.ClickRibbon("TabContacts_mSync0")
    WScript.Echo "recorded: " & Recorded(1, "command=")

    Set explorer.CurrentFolder = outlook.GetNamespace("MAPI").GetDefaultFolder(inboxFolder)
    WScript.Echo "in the inbox: " & Seen(user, "TabMail_ButtonSendToPhone")
    WScript.Echo "clicked: " & user.ClickRibbon("TabContacts_ButtonSendToPhone")
    Set explorer.CurrentFolder = contacts
    WScript.Echo "selected: " & explorer.Selection.Item(1).FullName & ", " & explorer.Selection.Item(1).EntryID
    WScript.Echo "clicked: " & user.ClickRibbon("TabContacts_ButtonSendToPhone")
    WScript.Echo "recorded: " & Recorded(2, "command=")
    WScript.Echo "handed over: " & Recorded(2, "ChangedC=")
    WScript.Echo "list afterwards: '" & ClearedList("ChangedC") & "'"
    WScript.Echo "clicked: " & user.ClickContextMenu("ContextMenuContactItem_ButtonSendToPhone")
    WScript.Echo "recorded: " & Recorded(3, "command=")

    Set task = outlook.CreateItem(taskItem)
    task.Display
    WScript.Echo "task: " & Seen(user, "TabTask_ButtonUpdate")
    WScript.Echo "clicked: " & user.ClickRibbon("TabTask_ButtonUpdate")
    WScript.Echo "recorded: " & Recorded(4, "command=")
    WScript.Echo "its id was handed over: " & (task.EntryID <> "" And Recorded(4, "ChangedT=") = ";" & task.EntryID)
    WScript.Echo "asked for: " & user.RibbonsAsked
End Sub

' What the ribbon shows under that id: its label, in brackets while it cannot be clicked.
Function Seen(user, id)
    Dim control
    Seen = "nothing"
    Set control = user.FindRibbon(id)
    If control Is Nothing Then Exit Function
    If Not control.Visible Then Exit Function
    Seen = control.Label
    If Not control.Enabled Then Seen = "[" & Seen & "]"
End Function

Function PopupOf(window)
    Dim control
    Set PopupOf = Nothing
    For Each control In window.CommandBars("Menu Bar").Controls
        If Plain(control.Caption) = "Corvella" Then Set PopupOf = control
    Next
End Function

Function EntriesOf(popup)
    Dim entry
    EntriesOf = ""
    If popup Is Nothing Then Exit Function
    For Each entry In popup.Controls
        EntriesOf = EntriesOf & "[" & Plain(entry.Caption) & "]"
    Next
End Function

Function EntryNamed(popup, caption)
    Dim entry
    Set EntryNamed = Nothing
    For Each entry In popup.Controls
        If Plain(entry.Caption) = caption Then Set EntryNamed = entry
    Next
End Function

' The tags of the add-in's buttons on the toolbar.
Function TagsOf(window)
    Dim control
    TagsOf = ""
    For Each control In window.CommandBars("Standard").Controls
        If control.Tag <> "" Then TagsOf = TagsOf & "[" & control.Tag & "]"
    Next
End Function

Function Plain(caption)
    Plain = Replace(caption, "&", "")
End Function

' One part of what Corvella recorded of its start of that number; waits for it. The file is opened only when it has
' grown: while it is open here, Corvella could not write to it. Not every script host can sleep meanwhile.
Function Recorded(number, part)
    Dim start, fields, i
    Recorded = ""
    start = Timer
    Do
        If SizeOf(recordFile) > recordSize Then ReadRecord
    Loop Until UBound(record) >= number Or Timer - start > patience
    If UBound(record) < number Then Exit Function
    fields = Split(record(number - 1), vbTab)
    For i = 0 To UBound(fields)
        If Left(fields(i), Len(part)) = part Then Recorded = Mid(fields(i), Len(part) + 1)
    Next
End Function

Sub ReadRecord
    Dim file
    recordSize = SizeOf(recordFile)
    Set file = files.OpenTextFile(recordFile)
    record = Split(file.ReadAll, vbCrLf)
    file.Close
End Sub

Function SizeOf(path)
    SizeOf = 0
    If files.FileExists(path) Then SizeOf = files.GetFile(path).Size
End Function

' The list once Corvella has taken it over.
Function ClearedList(name)
    Dim shell, start
    Set shell = CreateObject("WScript.Shell")
    start = Timer
    Do
        ClearedList = shell.RegRead(lists & name)
    Loop Until ClearedList = "" Or Timer - start > patience
End Function
