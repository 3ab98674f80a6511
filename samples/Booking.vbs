' Books two people for a meeting, every week, ten times, without a dialog: cscript Booking.vbs
' The library and the data layer must be registered (see README.md): a script has no manifest.
Option Explicit
Dim database, root, command, links, link, rule
Set database = CreateObject("KorvaneData.Database")
Set root = database.Open("sample.sqlite", "")
On Error Resume Next
database.AddSample root   ' refused where it is there already
On Error GoTo 0

' the command books one resource
Set command = CreateObject("KorvaneDlg.EditEvents")
command.Operation = 1
command.Operand("Root") = root
command.Operand("TypeID") = 2
command.Operand("N0") = 2
command.Operand("T0") = Date + TimeSerial(9, 0, 0)
command.Operand("T1") = Date + TimeSerial(10, 0, 0)
command.Operand("Text") = "Planning"
command.Execute

' a link group adds another one, and carries the rule: all three are the data layer's
Set links = root.EventLinks
link = links.Create(command.Operand("EventID"))
links.AddNames link, Array(3)
Set rule = root.NewRecurrence(2)   ' 1 day, 2 week, 3 month, 4 year, 5 Easter
rule.Interval = 0                  ' weeks left out between two
rule.Count = 10
links.SetRecurrence link, rule

WScript.Echo "booked: activity " & command.Operand("EventID") & ", link group " & link
