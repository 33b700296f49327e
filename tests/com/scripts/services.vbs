' A host whose login is a VBScript object: it changes a text by reference. Argument: the server's folder.
Option Explicit
Dim host, inner, gljz, login, parameters, message
Set host = CreateObject("TqGLJZ.ReferenceHost")
host.Today = DateSerial(2006, 1, 15)
host.Interactive = False
host.Open "embedded:" & WScript.Arguments(0)
Set inner = host.Login("001", 2006)

Class ScriptLogin
  Public Marks
  Public Property Get LoginConnText
    LoginConnText = inner.LoginConnText
  End Property
  Public Property Get LoginAccId
    LoginAccId = "001"
  End Property
  Public Property Get LoginYear
    LoginYear = 2006
  End Property
  Public Property Get LoginLanguage
    LoginLanguage = "zh-CN"
  End Property
  Public Property Get IsGFLogin
    IsGFLogin = False
  End Property
  Public Function LoginOpenAccount(purpose, ByRef text)
    Dim account
    account = text
    LoginOpenAccount = inner.LoginOpenAccount(purpose, account)
    text = account
  End Function
  Public Sub LoginMarkDone(number, systemId, forYear, done)
    Marks = Marks & number & " " & systemId & " " & forYear & " " & CStr(done) & ";"
    inner.LoginMarkDone number, systemId, forYear, done
  End Sub
End Class

Set login = New ScriptLogin
Set gljz = CreateObject("TqGLJZ.clsGLJZ")
Set gljz.ZwPubCls = host.Services("001", 2006)
parameters = ""
message = ""
WScript.Echo "returned " & CStr(gljz.Transfer("001", "2005", "2006", parameters, login, message, Nothing))
WScript.Echo "reached its end " & CStr(gljz.getTransferMsg(message))
WScript.Echo "marked " & login.Marks
WScript.Echo "end of services.vbs"
