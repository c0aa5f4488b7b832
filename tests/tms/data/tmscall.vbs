' tmscall.vbs: asks the PED to call the TMS server
Option Explicit

'Const ZONTALKEXE="c:\old\zontalkclient.exe"
Const ZONTALKEXE="c:\old\zontalkclient.exe"
Const ZONTALCOPYEXE="c:\old\zontalkcopyfiles.exe"
const ConfigFileDir = "c:\old\"
Const COPYFILE_FROMDIR="c:\old\work\"
Const COPYFILE_TODIR="c:\old\"
Const COPYFILE_LOGFILE="c:\old\zoncopyfile.log"
Const CXMERCHANTID="0"
Const CXCLIENTID="0"  ' from the acquirer
  CONST APPLICATION_DOWNLOADVX810="C41UBT"  
   Const Application_DownloadVX810="OLD"   
Const APPLICATION_FUELFILES=""
CONST APPLICATION_OFFLINEFILE="XYZUIGE"
 CONST APPLICATION_OFFLINEFILE="" 
Const COMPORT=1 : Const ZONTALKEXE="x"
Const COMPORT=1

Dim shell, tmsType
tmsType = WScript.Arguments(0)
Set shell = CreateObject("WScript.Shell")
shell.Run """" & ZONTALKEXE & """ " & CXMERCHANTID & " " & tmsType, 0, True