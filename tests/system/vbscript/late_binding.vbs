' What a script meets when it calls the component late bound.
' Arguments: the connection string of the sample database, an existing folder.
' Prints each failed check and the counts; the exit code is the number of failed checks.
Option Explicit

Dim passed, failed
passed = 0
failed = 0

Sub Check(what, actual, expected)
  If actual = expected And VarType(actual) = VarType(expected) Then
    passed = passed + 1
  Else
    failed = failed + 1
    WScript.Echo "FAILED " & what & ": " & TypeName(actual) & " '" & actual & "', not " & _
        TypeName(expected) & " '" & expected & "'"
  End If
End Sub

Dim connection, folder
connection = WScript.Arguments(0)
folder = WScript.Arguments(1)

Dim session
Set session = CreateObject("Vilnor.BVilnor")
session.InitVilnor connection, 1, 2

' Arguments by reference: values, variables, numbers in a text.
Dim pid, firstName, path
pid = 4711
firstName = "Anna"
path = session.WriteNewCase(pid, "12", 3, "19450101-1234", firstName, "Berg", folder)
Check "path of the request", path, folder & "\InNewCase4711.xml"
Check "variable by reference", pid, 4711
Check "text variable by reference", firstName, "Anna"
path = session.WRITENEWCASE(CLng(4712), 12.4, 3, "", "", "", folder)
Check "name in capitals", path, folder & "\InNewCase4712.xml"

' What a script gets for a wrong call.
On Error Resume Next
session.OpenExistCase "no number"
Check "text for a number", Err.Number, CLng(13)
Err.Clear
session.LaunchCount
Check "member that is private", Err.Number, CLng(438)
Err.Clear
session.OpenWithNewCase 1
Check "too few arguments", Err.Number, CLng(450)
Err.Clear
session.OpenVilnor 1
Check "too many arguments", Err.Number, CLng(450)
Err.Clear
On Error Goto 0

' The database class: results by value, recordsets, an argument left out.
Dim database, patient
Set database = CreateObject("Vilnor.DBVilnor")
Set patient = database.GetPatientByPID(pid)
Check "patient found", patient.EOF, False
Check "field by name", patient.Fields("PersNr").Value, "1234"
Check "field by index", patient.Fields(1).Value, "1234"
patient.MoveNext
Check "behind the only row", patient.EOF, True
database.AddNewCase pid, 12, 3, "A-17", pid, 9, 5, "anna"
Check "case number", database.GetCaseIdByVilnorId(104), "A-17"
Check "case exists", database.CaseExistsPID(pid, 9, "A-17"), True
On Error Resume Next
database.InitConnection
Check "connection open already", Err.Number, CLng(3705)
Check "its text", Err.Description, "Operation is not allowed when the object is open."
Err.Clear
On Error Goto 0

' Last: a query without rows leaves the shared recordset open for the next one to stumble over.
Check "no link record", database.GetVilnorIdByFHPId(99), CLng(0)

WScript.Echo passed & " passed, " & failed & " failed"
WScript.Quit failed
