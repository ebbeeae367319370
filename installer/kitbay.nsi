; The installer of Kitbay for one user, without an administrator. ./package makes it; it passes on
;   STAGE    the folder with the files as they are to lie beside the program
;   OUTPUT   the installer's path
;   VERSION  as "1.2.3"
;   ICON     the program's icon
;   SIZE     of all files, in KB
; With /S nothing is asked and nothing is shown. It fails with 2 while Kitbay runs.

!define UNINSTALLS "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define UNINSTALL "${UNINSTALLS}\Kitbay"
!define MANAGER "{09AF1DF2-E54A-4906-B489-73D097248D58}"
!define REGISTRY "{8A0E9829-3EA9-4179-8E8A-4008593B13B1}"
!define I_MANAGER "{0A31275D-7C6C-49EC-BCF6-9F429F461F38}"
!define I_REGISTRY "{40D822C5-F70C-4C29-981D-8BDAFB9F0135}"
!define TYPE_LIBRARY "{997F378A-6AD5-4C37-8B7C-27DA8AC64210}"

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

Function .onInit
  !insertmacro DemandThatKitbayIsClosed
FunctionEnd

Function un.onInit
  !insertmacro DemandThatKitbayIsClosed
FunctionEnd

Section
  SetOutPath "$INSTDIR"
  File "${STAGE}\*.*"
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Kitbay.lnk" "$INSTDIR\Kitbay.exe"

  ; The suite may have brought its own objects for all users; those are left to their work.
  ReadRegStr $0 HKLM "Software\Classes\URLDownloadLib.URLDownload\CLSID" ""
  ReadRegStr $1 HKCU "${UNINSTALL}" "SuiteObjects"
  ${If} $0 == ""
  ${OrIf} $1 == "registered"
    ExecWait '"$SYSDIR\regsvr32.exe" /s "$INSTDIR\OvalinkSuite.dll"' $2
    ${If} $2 <> 0
      MessageBox MB_OK|MB_ICONEXCLAMATION "The objects of the suite could not be registered." /SD IDOK
      SetErrorLevel 3
    ${EndIf}
    WriteRegStr HKCU "${UNINSTALL}" "SuiteObjects" "registered"
  ${EndIf}

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

Section "un."
  ReadRegStr $0 HKCU "${UNINSTALL}" "SuiteObjects"
  ${If} $0 == "registered"
    ExecWait '"$SYSDIR\regsvr32.exe" /s /u "$INSTDIR\OvalinkSuite.dll"'
  ${EndIf}

  ; What Kitbay entered for itself when it was started, unless another Kitbay has its place by now.
  ReadRegStr $0 HKCU "Software\Classes\CLSID\${MANAGER}\LocalServer32" ""
  ${If} $0 == '"$INSTDIR\Kitbay.exe"'
    DeleteRegKey HKCU "Software\Classes\Kitbay.Manager"
    DeleteRegKey HKCU "Software\Classes\Kitbay.Registry"
    DeleteRegKey HKCU "Software\Classes\CLSID\${MANAGER}"
    DeleteRegKey HKCU "Software\Classes\CLSID\${REGISTRY}"
    DeleteRegKey HKCU "Software\Classes\Interface\${I_MANAGER}"
    DeleteRegKey HKCU "Software\Classes\Interface\${I_REGISTRY}"
    DeleteRegKey HKCU "Software\Classes\TypeLib\${TYPE_LIBRARY}"
  ${EndIf}
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey /ifempty HKCU "${UNINSTALLS}"

  Delete "$SMPROGRAMS\Kitbay.lnk"
  Delete "$INSTDIR\Kitbay.exe"
  Delete "$INSTDIR\OvalinkSuite.dll"
  Delete "$INSTDIR\AddonUpdates.html"
  Delete "$INSTDIR\iaddons.gif"
  Delete "$INSTDIR\ichannels.gif"
  Delete "$INSTDIR\itrans.gif"
  Delete "$INSTDIR\uaddons.gif"
  Delete "$INSTDIR\uchannels.gif"
  Delete "$INSTDIR\utrans.gif"
  Delete "$INSTDIR\Licence.txt"
  Delete "$INSTDIR\Licences of libraries.txt"
  Delete "$INSTDIR\User guide.txt"
  Delete "$INSTDIR\Uninstall.exe"
  ; Only when it is empty: what else lies there is the user's.
  RMDir "$INSTDIR"
SectionEnd
