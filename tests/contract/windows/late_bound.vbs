' Uses ADO as a host's script does, late bound. Argument: the database file. Prints what it reads.
Option Explicit
Dim connection, recordset, clone, field, affected, value

Sub Report(what)
  WScript.Echo what & ": " & Err.Number & " " & Err.Description
  Err.Clear
End Sub

Set connection = CreateObject("ADODB.Connection")
WScript.Echo "closed " & connection.State
connection.Open "Driver=SQLite3;Database=" & WScript.Arguments(0)
WScript.Echo "open " & connection.State

connection.Execute "DROP TABLE IF EXISTS Script"
connection.Execute "CREATE TABLE Script (ID integer primary key autoincrement, Fornavn varchar(50)," & _
  " Belopp numeric(10,2), Pris currency, Dato timestamp, Aktiv boolean)"
connection.Execute "INSERT INTO Script (Fornavn, Belopp, Pris, Dato, Aktiv) VALUES" & _
  " ('" & Chr(197) & "sa', 12.50, 99.5, #11-16-2026 14:05:00#, 1)", affected
WScript.Echo "affected " & affected
connection.Execute "INSERT INTO Script (Fornavn) VALUES (NULL)"
WScript.Echo "identity " & connection.Execute("Select @@Identity")(0)

Set recordset = connection.Execute("SELECT * FROM Script ORDER BY ID")
WScript.Echo "fields " & recordset.Fields.Count
For Each field In recordset.Fields
  WScript.Echo field.Name & " " & VarType(field.Value)
Next
WScript.Echo "name " & Asc(recordset.Fields("Fornavn").Value) & Mid(recordset("fornavn"), 2)
WScript.Echo "by number " & recordset(0) & recordset.Fields(0)
WScript.Echo "year " & Year(recordset("Dato")) & " minute " & Minute(recordset("Dato").Value)
recordset.MoveNext
WScript.Echo "null " & Word(IsNull(recordset("Fornavn").Value)) & " end " & Word(recordset.EOF)
recordset.MoveNext
WScript.Echo "end " & Word(recordset.EOF)

Set recordset = CreateObject("ADODB.Recordset")
recordset.CursorLocation = 3
recordset.Open "SELECT * FROM Script ORDER BY ID", connection, 3, 4
WScript.Echo "rows " & recordset.RecordCount
Set clone = recordset.Clone
recordset("Fornavn") = "first"
recordset.Fields("Fornavn") = recordset("Fornavn") & " second"
recordset.MoveNext
recordset.Close
WScript.Echo "clone " & clone.Fields("Fornavn").Value

value = clone.GetRows(1)
WScript.Echo "a row " & UBound(value, 1) + 1 & " by " & UBound(value, 2) + 1 & ", " & value(1, 0)
value = clone.GetRows(, , Array("ID", 5))
WScript.Echo "the rest " & UBound(value, 1) + 1 & " by " & UBound(value, 2) + 1 & ", " & value(0, 0) & _
  " " & Word(IsNull(value(1, 0))) & ", end " & Word(clone.EOF)
clone.MoveFirst
value = clone.GetRows(5, , "Fornavn")
WScript.Echo "a field " & UBound(value, 1) + 1 & " by " & UBound(value, 2) + 1 & ", " & value(0, 0)

On Error Resume Next
value = clone.GetRows()
Report "rows at the end"
clone.MoveFirst
value = clone.GetRows(1, , Array("ID", "Nmae"))
Report "rows by name"
WScript.Echo "still at " & clone("ID")
value = clone.GetRows(-2)
Report "rows, how many"
value = clone.GetRows(1, 2)
Report "rows from a bookmark"
value = recordset.EOF
Report "closed"
value = clone.Fields("Nmae")
Report "name"
clone.MoveNext
clone.MoveNext
clone.MoveNext
Report "end"
connection.Open
Report "open"
connection.RollbackTrans
Report "transaction"
connection.Execute "SELEC 1"
Report "statement"
WScript.Echo "errors " & connection.Errors.Count & " " & connection.Errors(0).NativeError
value = clone.GetString
Report "left out"
recordset.Open "SELECT 1", Nothing
Report "connection"

' A Boolean joined to a text reads as the user's language has it.
Function Word(truth)
  Word = "False"
  If truth Then Word = "True"
End Function
