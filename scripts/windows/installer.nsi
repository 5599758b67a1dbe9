; The installer: VERSION, SOURCE (the folder to install), ICON and TARGET (the file to make) come from the command line.
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel admin
Name "同意書管理 ${VERSION}"
OutFile "${TARGET}"
; Where every user may write: settings and the database lie beside the program, as in the suite's own folder.
InstallDir "C:\douisho"
InstallDirRegKey HKLM "Software\douisho" "Folder"
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1041 "ProductName" "douisho"
VIAddVersionKey /LANG=1041 "FileDescription" "同意書管理のインストール"
VIAddVersionKey /LANG=1041 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1041 "LegalCopyright" "The douisho developers"

!include MUI2.nsh
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
!define MUI_DIRECTORYPAGE_TEXT_TOP "同意書管理を入れるフォルダを選んでください。$\r$\n既存のシステムと一緒に使う場合は、そのフォルダ（Massage.ini のあるフォルダ）を選びます。"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Japanese"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\douisho"

Section
  SetRegView 64
  SetShellVarContext all
  SetOutPath "$INSTDIR"
  File "${SOURCE}/douisho.exe"
  File "${SOURCE}/douisho-menu.exe"
  File "${SOURCE}/douisho-sample.exe"
  File "${SOURCE}/README.ja.md"
  File "${SOURCE}/CHANGES.ja.md"
  File "${SOURCE}/LICENSE"
  File /r "${SOURCE}/licences"
  ; A report engine that is there is used, and not written over.
  ReadRegStr $0 HKLM "Software\douisho" "Viewer"
  StrCmp $0 "$INSTDIR" viewer
  IfFileExists "$INSTDIR\wfrfv10.exe" viewerDone
viewer:
  File "${SOURCE}/wfrfv10.exe"
  File "${SOURCE}/wfrimg10.exe"
  WriteRegStr HKLM "Software\douisho" "Viewer" "$INSTDIR"
viewerDone:
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKLM "Software\douisho" "Folder" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "同意書管理"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" "$INSTDIR\douisho.exe"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
  CreateShortCut "$SMPROGRAMS\同意書管理.lnk" "$INSTDIR\douisho.exe" "1"
  CreateShortCut "$DESKTOP\同意書管理.lnk" "$INSTDIR\douisho.exe" "1"
SectionEnd

; Only what was installed goes: settings and the database of a practice stay.
Section "Uninstall"
  SetRegView 64
  SetShellVarContext all
  Delete "$INSTDIR\douisho.exe"
  Delete "$INSTDIR\douisho-menu.exe"
  Delete "$INSTDIR\douisho-sample.exe"
  ReadRegStr $0 HKLM "Software\douisho" "Viewer"
  StrCmp $0 "$INSTDIR" 0 viewerStays
  Delete "$INSTDIR\wfrfv10.exe"
  Delete "$INSTDIR\wfrimg10.exe"
viewerStays:
  Delete "$INSTDIR\README.ja.md"
  Delete "$INSTDIR\CHANGES.ja.md"
  Delete "$INSTDIR\LICENSE"
  RMDir /r "$INSTDIR\licences"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\同意書管理.lnk"
  Delete "$DESKTOP\同意書管理.lnk"
  DeleteRegKey HKLM "${UNINSTALL}"
  DeleteRegKey HKLM "Software\douisho"
SectionEnd
