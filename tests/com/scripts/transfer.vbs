' A carry-forward from VBScript, where texts by reference come back. Argument: the server's folder.
Option Explicit
Dim host, gljz, parameters, message, text, carried, rows
Set host = CreateObject("TqGLJZ.ReferenceHost")
host.Today = DateSerial(2006, 1, 15)
host.Interactive = False
host.Open "embedded:" & WScript.Arguments(0)
Set gljz = CreateObject("TqGLJZ.clsGLJZ")
Set gljz.ZwPubCls = host.Services("001", 2006)
parameters = ""
message = "before"
carried = gljz.Transfer("001", "2005", "2006", parameters, host.Login("001", 2006), message, Nothing)
WScript.Echo "returned " & CStr(carried)
WScript.Echo "message came back " & CStr(Len(message) > 0 And message <> "before")
WScript.Echo "parameters came back " & CStr(InStr(parameters, "<Account") > 0)
text = "before"
WScript.Echo "reached its end " & CStr(gljz.getTransferMsg(text))
WScript.Echo "nothing was reported " & CStr(text = "")
Set rows = host.Connection("TqData_001_2006").OpenRecordset("select mb from gl_accsum where ccode='1001' and iperiod=1", 2)
WScript.Echo "an amount is a currency " & CStr(VarType(rows.Fields("mb").Value) = 6)
WScript.Echo "end of transfer.vbs"
