// A carry-forward from JScript. Argument: the server's folder.
// The last line says that the script came to its end: the script host may keep silent about an error.
var host = new ActiveXObject("TqGLJZ.ReferenceHost");
host.Today = "2006-01-15";
host.Interactive = false;
host.Open("embedded:" + WScript.Arguments(0));
var gljz = new ActiveXObject("TqGLJZ.clsGLJZ");
gljz.ZwPubCls = host.Services("001", 2006);
var carried = gljz.Transfer("001", "2005", "2006", "", host.Login("001", 2006), "", null);
WScript.Echo("returned " + carried);
WScript.Echo("reached its end " + gljz.getTransferMsg(""));
WScript.Echo("services' year " + gljz.ZwPubCls.CurrentYearInfo);
try {
  host.Services("no such account", 2006);
} catch (e) {
  WScript.Echo("refused " + (e.description.indexOf("no such account") >= 0));
}
WScript.Echo("end of transfer.js");
