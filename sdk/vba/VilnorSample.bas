Attribute VB_Name = "VilnorSample"
' A host of Vilnor in Office. Import this module and VilnorSession.cls, refer to the type library
' "Vilnor" (Tools, References), and put in your own values:
Option Explicit

Private Const Connection = "DSN=Kestra"
Private Const DatabaseType = 2          ' dates in SQL are written: 1 #...#, 2 '...'
Private Const Folder = "C:\Kestra\Vilnor"
Private Const Patient = 4711
Private Const Practitioner = 12
Private Const Company = 3
Private Const ApplicationId = 77

' It must outlive each procedure: the answers come while it lives.
Private session As VilnorSession

' Run this first, for example when the document is opened.
Public Sub StartVilnor()
    Dim problem As String
    problem = Problem32Bit()
    If problem = "" Then
        Set session = New VilnorSession
        problem = session.Start(Connection, DatabaseType)
    End If
    If problem = "" Then
        session.ReadWaitingResults Folder
    Else
        Set session = Nothing
        MsgBox problem, vbExclamation
    End If
End Sub

' What 64-bit Office means: it cannot load Vilnor.dll.
Private Function Problem32Bit() As String
#If Win64 Then
    Problem32Bit = "Vilnor.dll is 32-bit, and a 64-bit process cannot load it; use a 32-bit Office."
#End If
End Function

' Opens Vilnor Link and returns at once. Office's own message loop delivers the answer.
Public Sub SendNewCase()
    If session Is Nothing Then
        MsgBox "Run StartVilnor first.", vbExclamation
        Exit Sub
    End If
    session.Fits ApplicationId
    session.NewCase Patient, Practitioner, Company
End Sub

' Run this last. Ending or editing the code also releases Vilnor; an answer that comes afterwards
' waits for the next StartVilnor.
Public Sub StopVilnor()
    Set session = Nothing
End Sub
