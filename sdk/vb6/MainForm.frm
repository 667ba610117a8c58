VERSION 5.00
Begin VB.Form MainForm 
   Caption         =   "Vilnor sample"
   ClientHeight    =   4200
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   8400
   LinkTopic       =   "MainForm"
   ScaleHeight     =   4200
   ScaleWidth      =   8400
   StartUpPosition =   3  'Windows Default
   Begin VB.CommandButton NewCaseButton 
      Caption         =   "New case"
      Enabled         =   0   'False
      Height          =   375
      Left            =   120
      TabIndex        =   0
      Top             =   120
      Width           =   1455
   End
   Begin VB.TextBox ReportBox 
      Height          =   3375
      Left            =   120
      Locked          =   -1  'True
      MultiLine       =   -1  'True
      ScrollBars      =   2  'Vertical
      TabIndex        =   1
      Top             =   600
      Width           =   8175
   End
End
Attribute VB_Name = "MainForm"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
' A host of Vilnor. Put in your own values:
Option Explicit

Private Const Connection = "DSN=Kestra"
Private Const DatabaseType = 2          ' dates in SQL are written: 1 #...#, 2 '...'
Private Const Folder = "C:\Kestra\Vilnor"
Private Const Patient = 4711
Private Const Practitioner = 12
Private Const Company = 3
Private Const ApplicationId = 77

Private WithEvents session As VilnorSession

Private Sub Form_Load()
    Dim problem As String
    Set session = New VilnorSession
    problem = session.Start(Connection, DatabaseType)
    If problem <> "" Then
        ReportBox.Text = problem
        Exit Sub
    End If
    session.ReadWaitingResults Folder
    NewCaseButton.Enabled = True
    ReportBox.Text = session.Report
End Sub

Private Sub NewCaseButton_Click()
    session.Fits ApplicationId
    session.NewCase Patient, Practitioner, Company
    ReportBox.Text = session.Report
End Sub

Private Sub session_JournalChanged()
    ReportBox.Text = session.Report
End Sub

Private Sub Form_Unload(Cancel As Integer)
    Set session = Nothing
End Sub
