' The library as a script uses it: by name, late bound. The first argument names a part, which prints one line per
' result; the test compares the lines.
Option Explicit

Sub Tell(what, value)
    WScript.Echo what & ": " & TypeName(value) & " " & value
End Sub

' The error of the last statement, which the next one is not to see.
Sub TellError(what)
    If Err.Number = 0 Then
        WScript.Echo what & ": no error"
    Else
        WScript.Echo what & ": " & Err.Number & " | " & Err.Source & " | " & Err.Description
    End If
    Err.Clear
End Sub

' The names of the commands are the other arguments.
Sub Commands
    Dim index, name, command, dialog
    For index = 1 To WScript.Arguments.Count - 1
        name = WScript.Arguments(index)
        Set command = CreateObject("KorvaneDlg." & name)
        Tell name & " begins with operation", command.Operation
        command.Operation = 3
        Tell name & " has operation", command.Operation
        Tell name & " is granted", command.Granted
        Tell name & " is undone", command.Undo
        Tell name & " is redone", command.Redo
        Tell name & " has an unknown operand", command.Operand("NoSuchOperand")
        command.Operand("NoSuchOperand") = 5
        Set dialog = CreateObject(command.DialogClass)
        Tell name & " has a dialog", Left(command.DialogClass, 14)
        Tell name & " has a dialog with a title", Len(dialog.Name) > 0
        Set dialog.Command = command
        Tell name & " is the dialog's", dialog.Command.Operation
        Set dialog = Nothing
        Set command = Nothing
    Next
End Sub

Sub Operands
    Dim command
    Set command = CreateObject("KorvaneDlg.EditGroups")
    Tell "DialogClass", command.DialogClass
    command.Operand("GroupID") = 5
    Tell "an integer", command.Operand("GroupID")
    command.Operand("GroupID") = "17"
    Tell "a text", command.Operand("GroupID")
    command.Operand("GroupID") = 3.7
    Tell "a fraction", command.Operand("GroupID")
    command.Operand("GroupID") = True
    Tell "a flag", command.Operand("GroupID")
    command.Operand("GroupID") = Empty
    Tell "nothing given", command.Operand("GroupID")
    command.Operand("groupid") = 6
    Tell "another case", command.Operand("groupid")
    Tell "is another name", command.Operand("GroupID")
    command.GroupID = 8
    Tell "the property", command.GroupID
    Tell "is the operand", command.Operand("GroupID")
    command.Operand("GroupName") = "Blue"
    Tell "a name", command.Operand("GroupName")
    command.Operand("GroupName") = 12
    Tell "a name from a number", command.Operand("GroupName")
    Tell "is the property", command.GroupName
    Tell "no database", command.Operand("Root") Is Nothing
    Set command.Operand("Root") = Nothing
    Tell "still none", command.Operand("Root") Is Nothing
    command.Operand("Root") = Nothing
    Tell "and still none", command.Operand("Root") Is Nothing
    Tell "Command", command.Command.Operand("GroupID")
End Sub

Sub Errors
    Dim command, resources, sunday
    Set command = CreateObject("KorvaneDlg.EditGroups")
    Set resources = CreateObject("KorvaneDlg.Resources")
    On Error Resume Next
    command.Operand("GroupID") = 5
    TellError "a number"
    command.Operand("GroupID") = "five"
    TellError "a text that is no number"
    command.Operand("GroupID") = 3000000000
    TellError "a number that is too large"
    Set command.Operand("Root") = resources
    TellError "an object of another class"
    command.Operand("Root") = 5
    TellError "a number for an object"
    Tell "the operand after the errors", command.Operand("GroupID")
    sunday = resources.Easter(2024)
    TellError "Easter"
End Sub

' The second argument is a file.
Sub Texts
    Dim resources
    Set resources = CreateObject("KorvaneDlg.Resources")
    Tell "a number", resources.GetString(21000)
    Tell "a text", resources.GetString("21000")
    Tell "no number", resources.GetString("twenty")
    Tell "an unknown one", resources.GetString(64000)
    Tell "LocaleID", resources.LocaleID
    Tell "2023", resources.IsLeapYear(2023)
    Tell "2024", resources.IsLeapYear(2024)
    Tell "no icon", resources.GetIcon(64000) Is Nothing
    Tell "no bitmap", resources.GetBitmap(21000) Is Nothing
    Tell "exported", resources.Export("TEMPLATE", 1, WScript.Arguments(1))
    Tell "nothing exported", resources.Export("TEMPLATE", 4711, WScript.Arguments(1) & ".none")
End Sub

Sub Relay
    Dim events, command
    Set events = CreateObject("KorvaneDlg.AppDialogEvents")
    Set command = CreateObject("KorvaneDlg.EditGroups")
    Tell "no sink", events.Sink Is Nothing
    Set events.Sink = Nothing
    events.RaiseDone True
    events.RaiseError
    events.RaiseResize
    Tell "submitted", events.SubmitCommand(command)
    Tell "offered", events.OfferCommand(command)
End Sub

' The second argument is the file of the database.
Sub Data
    Dim database, root, command, id
    Set database = CreateObject("KorvaneData.Database")
    Set root = database.Open(WScript.Arguments(1), "")
    Set command = CreateObject("KorvaneDlg.EditGroups")
    Set command.Operand("Root") = root
    Tell "the database", command.Operand("Root") Is root

    command.Operation = 1
    Tell "prepared", command.Prepare
    command.Operand("GroupName") = "Blue"
    Tell "added", command.Execute
    id = command.Operand("GroupID")
    Tell "has an id", id > 3

    command.Operation = 3
    command.Operand("GroupID") = id
    command.Prepare
    Tell "read", command.Operand("GroupName")
    command.Operand("GroupName") = "Green"
    command.Execute
    Tell "keeps its id", command.Operand("GroupID") = id

    On Error Resume Next
    command.Operation = 1
    command.Prepare
    command.Operand("GroupName") = "green"
    command.Execute
    TellError "the same name"
    Tell "no group", command.Operand("GroupID")
    command.Operand("GroupName") = " "
    command.Execute
    TellError "no name"
    command.Operand("GroupName") = "Red"
    command.Execute
    TellError "another name"

    command.Operation = 2
    command.Operand("GroupID") = id
    command.Execute
    TellError "deleted"
    Tell "is gone", command.Operand("GroupID")
    command.Operand("GroupID") = 1
    command.Execute
    TellError "a group of the data layer's own"
    Tell "is still it", command.Operand("GroupID")
End Sub

Select Case WScript.Arguments(0)
    Case "commands" Commands
    Case "operands" Operands
    Case "errors" Errors
    Case "texts" Texts
    Case "relay" Relay
    Case "data" Data
End Select
' A script that fails ends with success as well: only this line tells that it came to its end.
WScript.Echo "end of script"
