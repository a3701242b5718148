' A host of the map control in VBScript: makes a layer with one triangle and reads it back.
' Run:  cscript //nologo host.vbs        (after register.cmd; on 64-bit Windows each cscript uses the control of its own width)
Option Explicit
Dim map, kind, tag, count, active, x, y, i

Set map = CreateObject("ORVANE4.Orvane4Ctrl.1")
map.OrvInit
map.OrvAddLayer "Parks", 1, 3, 0
map.OrvAddDatEx "Parks", 1, 7, 0, Array(0, 100, 50, 0), Array(0, 0, 100, 0), Array(0, 0, 0, 0)

If map.OrvGetDatInfoEx("Parks", 1, 7, kind, tag, count, active) Then
    WScript.Echo "feature 7 has " & count & " points"
End If
If map.OrvGetDatPnt("Parks", 1, 7, x, y) Then
    For i = 0 To UBound(x)
        WScript.Echo "  " & x(i) & ", " & y(i)
    Next
End If
map.Zoom = 2500
WScript.Echo "scale 1:" & map.Zoom
WScript.Echo "done"
