' A host of Vilnor in one script.
'   C:\Windows\SysWOW64\cscript.exe //nologo vilnor_sample.vbs CONNECTION DBTYPE FOLDER PID BID RID FHPID
' README.md explains the arguments.
Option Explicit

Const Usage = 1, Not32Bit = 2, NoComponent = 3, NoDatabase = 4

Dim vilnor, resultName, stuck
Set resultName = New RegExp
resultName.Pattern = "^Out(NewFHP|NewCase|ExistCase)(0|-?[1-9][0-9]{0,9})( .*)?\.xml$"
Set stuck = CreateObject("Scripting.Dictionary")

Play

Sub Print(line)
  WScript.Echo line
End Sub

Sub Fail(code, line)
  WScript.Echo "vilnor_sample: " & line
  WScript.Quit code
End Sub

Function ErrorText()
  ErrorText = Err.Number & " (0x" & Hex(Err.Number) & ") " & Err.Description
  ' A driver's text may have several lines.
  ErrorText = Replace(Replace(ErrorText, vbCr, " "), vbLf, " ")
End Function

Sub Play()
  Dim connectionParameter, kestraLangID, dbType, PID, BID, RID
  If WScript.Arguments.Count <> 7 Then
    Fail Usage, "usage: vilnor_sample.vbs CONNECTION DBTYPE FOLDER PID BID RID FHPID"
  End If
  If CreateObject("WScript.Shell").Environment("Process")("PROCESSOR_ARCHITECTURE") <> "x86" Then
    Fail Not32Bit, "Vilnor.dll is 32-bit, and a 64-bit process cannot load it; start this script " & _
        "with C:\Windows\SysWOW64\cscript.exe"
  End If
  CreateVilnor
  ConnectEvents
  connectionParameter = WScript.Arguments(0)
  kestraLangID = 1
  dbType = CInt(WScript.Arguments(1))
  vilnor.InitVilnor connectionParameter, kestraLangID, dbType
  Print "Vilnor is ready."
  TryDatabase
  ReadWaitingResults WScript.Arguments(2)
  AskWhetherItFits CLng(WScript.Arguments(6))
  PID = CLng(WScript.Arguments(3))
  BID = CLng(WScript.Arguments(4))
  RID = CLng(WScript.Arguments(5))
  vilnor.OpenWithNewCase PID, BID, RID
  Print "A new case for patient " & PID & ": waiting for Vilnor Link's answer."
  ' The answer comes as a window message, and a box is a script's simplest message loop. While it is
  ' open, Vilnor reads the result and changes the database.
  MsgBox "Send the case in Vilnor Link. Press OK when you have closed it.", 64, "Vilnor sample"
  Print "The box is closed: a host shows its journal again."
  Set vilnor = Nothing
  Print "Vilnor is released."
End Sub

Sub CreateVilnor()
  On Error Resume Next
  Set vilnor = CreateObject("Vilnor.BVilnor")
  If Err.Number <> 0 Then
    Fail NoComponent, "Vilnor.dll is not registered on this computer; an administrator installs " & _
        "Vilnor-1.5.N.msi: " & ErrorText()
  End If
End Sub

' Vilnor raises its events before the call that causes them returns.
Sub ConnectEvents()
  On Error Resume Next
  WScript.ConnectObject vilnor, "vilnor_"
  If Err.Number <> 0 Then Print "This script host receives no events: " & ErrorText()
End Sub

Sub vilnor_UpdateJournal()
  Print "Event UpdateJournal: a host shows its journal again."
End Sub

' Vilnor reports a failing database in message boxes. Only a DBVilnor returns the error, when it is
' created; so a host that creates one first can tell the user in its own words. It must release it,
' because it keeps the database open.
Sub TryDatabase()
  Dim database
  On Error Resume Next
  Set database = CreateObject("Vilnor.DBVilnor")
  If Err.Number <> 0 Then
    Fail NoDatabase, "the database cannot be opened; check the connection string: " & ErrorText()
  End If
  Set database = Nothing
End Sub

' Asks whether Vilnor Link can take everything that is planned in an application.
Sub AskWhetherItFits(FHPId)
  Dim errCode, errMsg
  errCode = 0
  errMsg = ""
  If vilnor.OKToSend(FHPId, errCode, errMsg) Then
    Print "OKToSend " & FHPId & ": yes"
  Else
    Print "OKToSend " & FHPId & ": no, " & errCode & " " & errMsg
  End If
End Sub

' --- Results that nobody read, for example because the host was closed before the answer came.
' "OutNewCase4711.xml" is the name that Vilnor reads. It sets a result aside under a name like
' "OutNewCase4711 2026-11-16 14.05.00.xml".

' Reads them, the oldest first. Deletes and overwrites nothing, so it may be interrupted at any
' moment. Call it at the start and when the database is back, while no request is open.
Sub ReadWaitingResults(folder)
  Dim name, own, before
  Do
    name = OldestIn(folder)
    If name = "" Then Exit Do
    own = OwnNameOf(name)
    before = CountIn(folder, own)
    If GiveOwnName(folder, name, own) Then ReadResult own
    If CountIn(folder, own) < before Then
      Print name & " is dealt with"
    Else
      ' Those with the same key that are newer must not be read before it.
      stuck.Add own, True
      Print name & " stays: a person must look at it"
    End If
  Loop
End Sub

Function IsResult(name)
  IsResult = resultName.Test(name)
  ' Vilnor's keys have 32 bits.
  If IsResult Then IsResult = (Abs(CDbl(resultName.Execute(name)(0).SubMatches(1))) < 2147483648)
End Function

Function OwnNameOf(name)
  Dim parts
  Set parts = resultName.Execute(name)(0).SubMatches
  OwnNameOf = "Out" & parts(0) & parts(1) & ".xml"
End Function

' "" if none is left. Of two results with the same time, the one that was set aside is older.
Function OldestIn(folder)
  Dim files, file, own, written
  OldestIn = ""
  Set files = CreateObject("Scripting.FileSystemObject")
  If Not files.FolderExists(folder) Then Exit Function
  For Each file In files.GetFolder(folder).Files
    If IsResult(file.Name) Then
      own = OwnNameOf(file.Name)
      If Not stuck.Exists(own) Then
        If OldestIn = "" Or file.DateLastModified < written Or _
            (file.DateLastModified = written And file.Name <> own) Then
          OldestIn = file.Name
          written = file.DateLastModified
        End If
      End If
    End If
  Next
End Function

Function CountIn(folder, own)
  Dim file
  CountIn = 0
  For Each file In CreateObject("Scripting.FileSystemObject").GetFolder(folder).Files
    If IsResult(file.Name) Then
      If OwnNameOf(file.Name) = own Then CountIn = CountIn + 1
    End If
  Next
End Function

' A newer result of that name is renamed for the time being. False if a file cannot be renamed.
Function GiveOwnName(folder, name, own)
  Dim files, ownPath, aside, number
  GiveOwnName = True
  If name = own Then Exit Function
  Set files = CreateObject("Scripting.FileSystemObject")
  ownPath = folder & "\" & own
  On Error Resume Next
  If files.FileExists(ownPath) Then
    number = 0
    Do
      number = number + 1
      aside = Left(ownPath, Len(ownPath) - 4) & " waiting " & number & ".xml"
    Loop While files.FileExists(aside)
    files.MoveFile ownPath, aside
  End If
  If Err.Number = 0 Then files.MoveFile folder & "\" & name, ownPath
  GiveOwnName = (Err.Number = 0)
End Function

Sub ReadResult(own)
  Dim parts, key
  Set parts = resultName.Execute(own)(0).SubMatches
  key = CLng(parts(1))
  Select Case parts(0)
    Case "NewFHP" vilnor.ReadNewFHP key
    Case "NewCase" vilnor.ReadNewCase key
    Case "ExistCase" vilnor.ReadExistCase key
  End Select
End Sub
