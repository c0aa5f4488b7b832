' tmscall.vbs - asks the PIN entry device to call the Ondrel terminal-management server.
' Argument 0: 0 standard call, 1 forced full download, 2 upload of the device's log files.
Option Explicit

'Const ZONTALKEXE="C:\Corvix\old\zontalkclient.exe"
Const ZONTALKEXE="C:\Corvix\zontalkclient.exe"
Const ZONTALCOPYEXE="C:\Corvix\zontalkcopyfiles.exe"
Const CONFIGFILEDIR="C:\Corvix\"
Const COPYFILE_FROMDIR="C:\Corvix\work\"
Const COPYFILE_TODIR="C:\Corvix\"
Const COPYFILE_LOGFILE="C:\Corvix\zoncopyfile.log"
Const CXMERCHANTID="0"
Const CXCLIENTID="0"
CONST APPLICATION_DOWNLOADVX810="C41UBP"
Const APPLICATION_FUELFILES=""
CONST APPLICATION_OFFLINEFILE="OFLUUGE"
Const COMPORT=1

Dim shell, tmsType, profile, command
If WScript.Arguments.Count > 0 Then
    tmsType = WScript.Arguments(0)
Else
    tmsType = "0"
End If
Select Case tmsType
    Case "1": profile = 2
    Case "2": profile = 3
    Case Else: profile = 1
End Select

Set shell = CreateObject("WScript.Shell")
command = """" & ZONTALKEXE & """ -profile " & profile & " -merchant " & CXMERCHANTID & _
          " -client " & CXCLIENTID & " -port COM" & COMPORT & _
          " -app " & APPLICATION_DOWNLOADVX810 & " -offline " & APPLICATION_OFFLINEFILE
If APPLICATION_FUELFILES <> "" Then command = command & " -fuel " & APPLICATION_FUELFILES
shell.Run command, 0, True
If tmsType = "2" Then
    shell.Run """" & ZONTALCOPYEXE & """ """ & COPYFILE_FROMDIR & """ """ & COPYFILE_TODIR & _
              """ """ & COPYFILE_LOGFILE & """", 0, True
End If
