' Makes an object of the class that is named on the command line and tells what it is.
Set addin = CreateObject(WScript.Arguments(0))
WScript.Echo "IsObject " & IsObject(addin)
WScript.Echo "TypeName " & TypeName(addin)
