; The per-user installer of Kitbay, which needs no administrator. It contains the program for 32-bit and for
; 64-bit suites and installs the one that fits the suite it finds. ./package makes it and passes in
;   STAGE    the folder with the files to be installed beside the program; those for one bitness only are
;            in its folders "32" and "64"
;   OUTPUT   the installer's path
;   VERSION  such as "1.2.3"
;   ICON     the program's icon
;   SIZE     the size of all installed files, in KB
; With /S it asks and shows nothing. It fails with 2 while Kitbay is running.

!define UNINSTALLS "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define UNINSTALL "${UNINSTALLS}\Kitbay"
!define MANAGER "{09AF1DF2-E54A-4906-B489-73D097248D58}"
!define REGISTRY "{8A0E9829-3EA9-4179-8E8A-4008593B13B1}"
!define I_MANAGER "{0A31275D-7C6C-49EC-BCF6-9F429F461F38}"
!define I_REGISTRY "{40D822C5-F70C-4C29-981D-8BDAFB9F0135}"
!define TYPE_LIBRARY "{997F378A-6AD5-4C37-8B7C-27DA8AC64210}"

Var Bits ; the bitness of the program to install: 32 or 64

Name "Kitbay"
BrandingText "Kitbay ${VERSION}"
OutFile "${OUTPUT}"
Icon "${ICON}"
UninstallIcon "${ICON}"
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestSupportedOS all
ManifestDPIAware true
InstallDir "$LOCALAPPDATA\Programs\Kitbay"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Kitbay"
VIAddVersionKey "ProductVersion" "${VERSION}.0"
VIAddVersionKey "FileVersion" "${VERSION}.0"
VIAddVersionKey "FileDescription" "Installs Kitbay"
VIAddVersionKey "LegalCopyright" "Copyright (c) 2026 The Kitbay authors, MIT licence"

LicenseData "${STAGE}\Licence.txt"
Page license
Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

; Files of a running program cannot be replaced or deleted.
!macro DemandThatKitbayIsClosed
  FindWindow $0 "KitbayMainWindow"
  ${If} $0 P<> 0
    MessageBox MB_OK|MB_ICONEXCLAMATION "Kitbay is running. Close it and try again." /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
!macroend
!include LogicLib.nsh
!include x64.nsh

; Only a program of the suite's own bitness can load the suite's libraries. LookForSuite looks in one view of
; the registry and sets $Bits and $R0 if they are empty: $Bits to the view's bitness if it has the main
; client's uninstall entry, $R0 to the bitness of the client's executable if it can be read.
!macro LookForSuite VIEW
  SetRegView ${VIEW}
  ReadRegStr $0 HKLM "${UNINSTALLS}\Tessel" "InstallLocation"
  ReadRegStr $1 HKLM "${UNINSTALLS}\Tessel" "ApplicationEXE"
  ${If} $0 != ""
    ${If} $1 == ""
      StrCpy $1 "Tessel.exe"
    ${EndIf}
    ${If} $Bits == ""
      StrCpy $Bits ${VIEW}
    ${EndIf}
    System::Call 'kernel32::GetBinaryTypeW(w "$0\$1", *i .r2) i .r3'
    ${If} $R0 == ""
    ${AndIf} $3 <> 0
      ${Select} $2
      ${Case} 0
        StrCpy $R0 32
      ${Case} 6
        StrCpy $R0 64
      ${EndSelect}
    ${EndIf}
  ${EndIf}
!macroend

; The entry may be in the wrong view, because a 32-bit installer may have installed a 64-bit suite. The
; executable is reliable.
Function ChooseBits
  StrCpy $Bits ""
  StrCpy $R0 ""
  ${If} ${RunningX64}
    !insertmacro LookForSuite 32
    !insertmacro LookForSuite 64
    SetRegView 32
    ${If} $R0 != ""
      StrCpy $Bits $R0
    ${EndIf}
  ${EndIf}
  ${If} $Bits == ""
    StrCpy $Bits 32
  ${EndIf}
FunctionEnd

Function .onInit
  !insertmacro DemandThatKitbayIsClosed
  Call ChooseBits
FunctionEnd

Function un.onInit
  !insertmacro DemandThatKitbayIsClosed
FunctionEnd

; Older installers registered this tree's objects of the suite. Now Kitbay creates them from the library
; beside it. The library that is still there is the older installer's, of either bitness. Without the
; redirection, a 32-bit installer finds the 64-bit registrar too.
!macro TakeSuiteObjectsBack
  ReadRegStr $0 HKCU "${UNINSTALL}" "SuiteObjects"
  ${If} $0 == "registered"
    ExecWait '"$SYSDIR\regsvr32.exe" /s /u "$INSTDIR\OvalinkSuite.dll"'
    ${If} ${RunningX64}
      ${DisableX64FSRedirection}
      ExecWait '"$SYSDIR\regsvr32.exe" /s /u "$INSTDIR\OvalinkSuite.dll"'
      ${EnableX64FSRedirection}
    ${EndIf}
    DeleteRegValue HKCU "${UNINSTALL}" "SuiteObjects"
  ${EndIf}
!macroend

Section
  !insertmacro TakeSuiteObjectsBack
  SetOutPath "$INSTDIR"
  File "${STAGE}\*.*"
  File /r "${STAGE}\tabs"
  SetOutPath "$INSTDIR"
  ${If} $Bits == 64
    File "${STAGE}\64\*.*"
  ${Else}
    File "${STAGE}\32\*.*"
  ${EndIf}
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Kitbay.lnk" "$INSTDIR\Kitbay.exe"

  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Kitbay"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\Kitbay.exe"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The Kitbay authors"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" ${SIZE}
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

; Deletes what Kitbay registered for itself when it started, in its own view of the registry, unless another
; Kitbay has replaced it. The machine's classes stay if the user may not change them.
!macro DeleteOwnClasses VIEW HIVE
  SetRegView ${VIEW}
  ReadRegStr $0 ${HIVE} "Software\Classes\CLSID\${MANAGER}\LocalServer32" ""
  ${If} $0 == '"$INSTDIR\Kitbay.exe"'
    DeleteRegKey ${HIVE} "Software\Classes\Kitbay.Manager"
    DeleteRegKey ${HIVE} "Software\Classes\Kitbay.Registry"
    DeleteRegKey ${HIVE} "Software\Classes\CLSID\${MANAGER}"
    DeleteRegKey ${HIVE} "Software\Classes\CLSID\${REGISTRY}"
    DeleteRegKey ${HIVE} "Software\Classes\Interface\${I_MANAGER}"
    DeleteRegKey ${HIVE} "Software\Classes\Interface\${I_REGISTRY}"
    DeleteRegKey ${HIVE} "Software\Classes\TypeLib\${TYPE_LIBRARY}"
  ${EndIf}
!macroend

Section "un."
  !insertmacro DeleteOwnClasses 64 HKCU
  !insertmacro DeleteOwnClasses 64 HKLM
  !insertmacro DeleteOwnClasses 32 HKCU
  !insertmacro DeleteOwnClasses 32 HKLM
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey /ifempty HKCU "${UNINSTALLS}"

  Delete "$SMPROGRAMS\Kitbay.lnk"
  Delete "$INSTDIR\Kitbay.exe"
  Delete "$INSTDIR\OvalinkSuite.dll"
  Delete "$INSTDIR\OvalinkSuite.manifest"
  Delete "$INSTDIR\AddonUpdates.html"
  Delete "$INSTDIR\iaddons.gif"
  Delete "$INSTDIR\ichannels.gif"
  Delete "$INSTDIR\itrans.gif"
  Delete "$INSTDIR\uaddons.gif"
  Delete "$INSTDIR\uchannels.gif"
  Delete "$INSTDIR\utrans.gif"
  RMDir /r "$INSTDIR\tabs"
  Delete "$INSTDIR\Licence.txt"
  Delete "$INSTDIR\Licences of libraries.txt"
  Delete "$INSTDIR\Kitbay.spdx.json"
  Delete "$INSTDIR\User guide.txt"
  Delete "$INSTDIR\Uninstall.exe"
  ; Only if it is empty: anything else there belongs to the user.
  RMDir "$INSTDIR"
SectionEnd
