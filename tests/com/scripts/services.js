// A host whose services object and new year's connection are JScript objects: every question and every statement of the
// run passes through this script. They ask the reference host and count. Argument: the server's folder.
var host = new ActiveXObject("TqGLJZ.ReferenceHost");
host.Today = "2006-01-15";
host.Interactive = false;
host.Open("embedded:" + WScript.Arguments(0));
var inner = host.Services("001", 2006);
var innerLogin = host.Login("001", 2006);
var asked = {};
function count(name) { asked[name] = (asked[name] || 0) + 1; }

// Result sets come from the reference host; the component reads them by name, field by field.
function Connection(inner) {
  this.ConnectionText = inner.ConnectionText;
  this.RawConnection = inner.RawConnection;
  this.BeginTrans = function () { count("BeginTrans"); inner.BeginTrans(); };
  this.CommitTrans = function () { count("CommitTrans"); inner.CommitTrans(); };
  this.RollbackTrans = function () { inner.RollbackTrans(); };
  this.ExecuteSql = function (sql) { count("ExecuteSql"); return inner.ExecuteSql(sql); };
  this.OpenRecordset = function (sql, options) { count("OpenRecordset"); return inner.OpenRecordset(sql, options); };
}

// Methods that hand their arguments on as they are.
function Services() {
  this.NewYearConn = new Connection(inner.NewYearConn);
  this.CurrentYearInfo = inner.CurrentYearInfo;
  this.AccountYearInfo = inner.AccountYearInfo;
  this.iStartYear = inner.iStartYear;
  this.AccountOptions = inner.AccountOptions;
  this.OperatorName = inner.OperatorName;
  // The calendar is an object of its own.
  this.YearCalendar = {
    GetYearStartDate: function (a, b) { count("GetYearStartDate"); return inner.YearCalendar(a, b); }
  };
  this.CalendarInfo = function (a, b) { count("CalendarInfo"); return inner.CalendarInfo(a, b); };
  this.ResText = function (key, args) { count("ResText"); return inner.ResText(key, args); };
  this.ServiceMsgBox = function (prompt, style, title, file, context) { count("ServiceMsgBox"); return 0; };
  this.ServiceLocalize = function (form, prefix, second, third) {
    count("ServiceLocalize");
    return inner.ServiceLocalize(form, prefix, second, third);
  };
  this.OptionText = function (group, name) { count("OptionText"); return inner.OptionText(group, name); };
  this.GetCodeRecord = function (code, record, s1) { count("GetCodeRecord"); inner.GetCodeRecord(code, record, s1); };
  this.MatchCode = function (code, option, flag) { count("MatchCode"); return inner.MatchCode(code, option, flag); };
  this.MatchDepartment = function (code, o, f) { count("MatchDepartment"); return inner.MatchDepartment(code, o, f); };
  this.MatchPerson = function (code, o, f) { count("MatchPerson"); return inner.MatchPerson(code, o, f); };
  this.MatchCustomer = function (code, o, f) { count("MatchCustomer"); return inner.MatchCustomer(code, o, f); };
  this.MatchVendor = function (code, o, f) { count("MatchVendor"); return inner.MatchVendor(code, o, f); };
  this.MatchItem = function (item, itemClass, o, f) { count("MatchItem"); return inner.MatchItem(item, itemClass, o, f); };
  this.GetSignRecord = function (sign, record) { count("GetSignRecord"); return inner.GetSignRecord(sign, record); };
  this.SignExists = function (sign) { count("SignExists"); return inner.SignExists(sign); };
  this.SettleStyleExists = function (style) { count("SettleStyleExists"); return inner.SettleStyleExists(style); };
  this.TranslateWord = function (word) { count("TranslateWord"); return inner.TranslateWord(word); };
}

var gljz = new ActiveXObject("TqGLJZ.clsGLJZ");
var services = new Services();
gljz.ZwPubCls = services;
// JScript cannot change a text by reference: the login that opens the account is the reference host's.
WScript.Echo("returned " + gljz.Transfer("001", "2005", "2006", "", innerLogin, "", null));
WScript.Echo("reached its end " + gljz.getTransferMsg(""));
WScript.Echo("same object " + (gljz.ZwPubCls === services));
WScript.Echo("asked for codes " + (asked.MatchCode > 50 && asked.GetCodeRecord > 50));
WScript.Echo("one transaction " + (asked.BeginTrans === 1 && asked.CommitTrans === 1));
WScript.Echo("statements " + (asked.ExecuteSql > 50 && asked.OpenRecordset > 50));
WScript.Echo("asked for texts " + (asked.ResText > 5));
WScript.Echo("asked for customers " + (asked.MatchCustomer > 0 || asked.MatchItem > 0));

// A failure of the host's own object reaches the caller of the entry; the script's engine keeps the words to itself.
var failing = new Services();
failing.ResText = function () { throw new Error(12345, "no texts today"); };
gljz.ZwPubCls = failing;
try {
  gljz.Transfer("001", "1999", "2006", "", innerLogin, "", null);
  WScript.Echo("no failure");
} catch (e) {
  WScript.Echo("failure arrives " + (e.description.indexOf("ResText") >= 0));
}
WScript.Echo("end of services.js");
