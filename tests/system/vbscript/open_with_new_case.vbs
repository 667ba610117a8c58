' Opens Vilnor Link on a new case, as a host that calls late bound does.
' Arguments: the connection string, PID, BID, RID.
Option Explicit

Dim session, pid
pid = CLng(WScript.Arguments(1))
Set session = CreateObject("Vilnor.BVilnor")
session.InitVilnor WScript.Arguments(0), 1, 2
session.OpenWithNewCase pid, WScript.Arguments(2), WScript.Arguments(3)
