' tmscall.vbs: asks the PED to call the TMS server
Option Explicit

Const ZONTALKEXE="c:\tessaly\lumora\zontalkclient.exe"
Const ZONTALKEXE="c:\tessaly\lumora\zontalkclient.exe"
Const ZONTALCOPYEXE="c:\tessaly\lumora\zontalkcopyfiles.exe"
Const CONFIGFILEDIR="c:\tessaly\lumora\"
Const COPYFILE_FROMDIR="c:\tessaly\lumora\work\"
Const COPYFILE_TODIR="c:\tessaly\lumora\"
Const COPYFILE_LOGFILE="c:\tessaly\lumora\zoncopyfile.log"
Const CXMERCHANTID="8880012345"
Const CXCLIENTID="07"
CONST APPLICATION_DOWNLOADVX810="GENPUBP"
Const Application_DownloadVX810="OLD"
Const APPLICATION_FUELFILES="KFUFE"
Const APPLICATION_OFFLINEFILE="XYZUUGE"
CONST APPLICATION_OFFLINEFILE=""
Const ZONTALKEXE="c:\tessaly\lumora\zontalkclient.exe"
Const COMPORT=3

Dim shell, tmsType
tmsType = WScript.Arguments(0)
Set shell = CreateObject("WScript.Shell")
shell.Run """" & ZONTALKEXE & """ " & CXMERCHANTID & " " & tmsType, 0, True
