// Makes the demo account set. Argument: the server's folder.
var host = new ActiveXObject("TqGLJZ.ReferenceHost");
host.Today = "2006-01-15";
host.Open("embedded:" + WScript.Arguments(0), true);
host.CreateDemo();
WScript.Echo("end of make_demo.js");
