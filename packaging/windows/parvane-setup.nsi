; The Windows package of the configuration utility: the wizard and parvane-apply, installed into
; the payment client's folder, a Start-menu shortcut to the wizard, and an uninstaller that takes
; away only what this package put there (never the payment client's files, the registry settings
; or the log). makensis /DVERSION=x.y.z /DBINARIES=<folder of the .exe files> /DOUTFILE=<package>
Unicode true
; Debian's NSIS makes a 64-bit installer with this stub; its default 32-bit one does not run on a
; 64-bit-only Windows (nor under the 64-bit-only Wine of the build machine).
Target amd64-unicode
RequestExecutionLevel admin
SetCompressor /SOLID lzma

!define PRODUCT "Corvix Parvane Configuration Utility"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\CorvixParvane"
!define MENU_FOLDER "$SMPROGRAMS\Corvix Parvane"

Name "${PRODUCT}"
OutFile "${OUTFILE}"
InstallDir "$PROGRAMFILES64\Tessaly"
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1033 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=1033 "FileDescription" "${PRODUCT} setup"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "CompanyName" "Corvix"
VIAddVersionKey /LANG=1033 "LegalCopyright" "Corvix"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

Section "Install"
    ; The card add-in is a 32-bit program; the uninstall entry goes where it keeps its own.
    SetRegView 32
    SetOutPath "$INSTDIR"
    File "${BINARIES}\parvane-config.exe"
    File "${BINARIES}\parvane-apply.exe"
    WriteUninstaller "$INSTDIR\parvane-uninstall.exe"
    SetShellVarContext all
    CreateDirectory "${MENU_FOLDER}"
    CreateShortcut "${MENU_FOLDER}\${PRODUCT}.lnk" "$INSTDIR\parvane-config.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "Corvix"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\parvane-config.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\parvane-uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\parvane-uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
    SetRegView 32
    Delete "$INSTDIR\parvane-config.exe"
    Delete "$INSTDIR\parvane-apply.exe"
    Delete "$INSTDIR\parvane-uninstall.exe"
    SetShellVarContext all
    Delete "${MENU_FOLDER}\${PRODUCT}.lnk"
    RMDir "${MENU_FOLDER}"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
    ; Only an empty folder goes: the payment client's files keep it.
    RMDir "$INSTDIR"
SectionEnd
