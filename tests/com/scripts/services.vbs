' A host whose services and login are VBScript objects in front of the reference host's. A VBScript procedure knows no
' optional arguments, and changes a text by reference. Argument: the server's folder.
Option Explicit
Dim host, inner, innerLogin, gljz, login, services, parameters, message, asked
Set host = CreateObject("TqGLJZ.ReferenceHost")
host.Today = DateSerial(2006, 1, 15)
host.Interactive = False
host.Open "embedded:" & WScript.Arguments(0)
Set inner = host.Services("001", 2006)
Set innerLogin = host.Login("001", 2006)
asked = 0

Class ScriptLogin
  Public Marks
  ' Nothing is assigned to it: not the sibling subsystem's login.
  Public IsGFLogin
  Public Property Get LoginConnText
    LoginConnText = innerLogin.LoginConnText
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
  Public Function LoginOpenAccount(purpose, ByRef text)
    Dim account
    account = text
    LoginOpenAccount = innerLogin.LoginOpenAccount(purpose, account)
    text = account
  End Function
  Public Sub LoginMarkDone(number, systemId, forYear, done)
    Marks = Marks & number & " " & systemId & " " & forYear & " " & CStr(done) & ";"
    innerLogin.LoginMarkDone number, systemId, forYear, done
  End Sub
End Class

Class ScriptServices
  Public Property Get NewYearConn
    Set NewYearConn = inner.NewYearConn
  End Property
  Public Property Get CurrentYearInfo
    CurrentYearInfo = inner.CurrentYearInfo
  End Property
  Public Property Get AccountYearInfo
    AccountYearInfo = inner.AccountYearInfo
  End Property
  Public Property Get iStartYear
    iStartYear = inner.iStartYear
  End Property
  Public Property Get AccountOptions
    Set AccountOptions = inner.AccountOptions
  End Property
  Public Property Get OperatorName
    OperatorName = inner.OperatorName
  End Property
  Public Property Get FormatDb
    Set FormatDb = inner.FormatDb
  End Property
  Public Function ResText(key, args)
    asked = asked + 1
    ResText = inner.ResText(key, args)
  End Function
  Public Function ServiceMsgBox(prompt, style, title, helpFile, context)
    ServiceMsgBox = 0
  End Function
  Public Function ServiceLocalize(form, prefix, second, third)
    ServiceLocalize = inner.ServiceLocalize(form, prefix, second, third)
  End Function
  Public Function CalendarInfo(a, b)
    CalendarInfo = inner.CalendarInfo(a, b)
  End Function
  Public Function YearCalendar(a, b)
    YearCalendar = inner.YearCalendar(a, b)
  End Function
  Public Function OptionText(group, name)
    OptionText = inner.OptionText(group, name)
  End Function
  Public Sub GetCodeRecord(code, record, s1, s2, s3, s4, s5, s6, s7)
    asked = asked + 1
    inner.GetCodeRecord code, record, s1, s2, s3, s4, s5, s6, s7
  End Sub
  Public Function MatchCode(code, choice, flag)
    asked = asked + 1
    MatchCode = inner.MatchCode(code, choice, flag)
  End Function
  Public Function MatchDepartment(code, choice, flag)
    MatchDepartment = inner.MatchDepartment(code, choice, flag)
  End Function
  Public Function MatchPerson(code, choice, flag)
    MatchPerson = inner.MatchPerson(code, choice, flag)
  End Function
  Public Function MatchCustomer(code, choice, flag)
    MatchCustomer = inner.MatchCustomer(code, choice, flag)
  End Function
  Public Function MatchVendor(code, choice, flag)
    MatchVendor = inner.MatchVendor(code, choice, flag)
  End Function
  Public Function MatchItem(item, itemClass, choice, flag)
    MatchItem = inner.MatchItem(item, itemClass, choice, flag)
  End Function
  Public Function GetSignRecord(sign, record)
    GetSignRecord = inner.GetSignRecord(sign, record)
  End Function
  ' Answers nothing at all for No, as scripts do.
  Public Function SignExists(sign)
    If inner.SignExists(sign) Then SignExists = True
  End Function
  Public Function SettleStyleExists(style)
    If inner.SettleStyleExists(style) Then SettleStyleExists = True
  End Function
  Public Function TranslateWord(word)
    TranslateWord = inner.TranslateWord(word)
  End Function
End Class

Set login = New ScriptLogin
Set services = New ScriptServices
Set gljz = CreateObject("TqGLJZ.clsGLJZ")
Set gljz.ZwPubCls = services
parameters = ""
message = ""
WScript.Echo "returned " & CStr(gljz.Transfer("001", "2005", "2006", parameters, login, message, Nothing))
WScript.Echo "reached its end " & CStr(gljz.getTransferMsg(message))
WScript.Echo "marked " & login.Marks
WScript.Echo "asked " & CStr(asked > 100)
WScript.Echo "end of services.vbs"
