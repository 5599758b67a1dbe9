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
!include LogicLib.nsh
!include FileFunc.nsh
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
!define MUI_DIRECTORYPAGE_TEXT_TOP "同意書管理を入れるフォルダを選んでください。$\r$\n既存のシステムと一緒に使う場合は、そのフォルダ（Massage.ini のあるフォルダ）を選びます。"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE refuseProgramFolders
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Japanese"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\douisho"

!define MEMORY "Software\douisho"

Var formsAreFree
Var imagesAreFree
Var menuIsCopied
Var formsAreCopied

!macro refuseBelow FOLDER
  StrLen $0 "${FOLDER}\"
  StrCpy $1 "$INSTDIR\" $0
  ${If} "${FOLDER}" != ""
  ${AndIf} $1 == "${FOLDER}\"
    MessageBox MB_OK|MB_ICONEXCLAMATION "「${FOLDER}」の中には入れられません。$\r$\n設定とデータベースもこのフォルダに置かれるため、すべての利用者が書き込めるフォルダが必要です。$\r$\nC:\douisho などを選んでください。" /SD IDOK
    SetErrorLevel 2
    Abort
  ${EndIf}
!macroend

Function refuseProgramFolders
  !insertmacro refuseBelow "$PROGRAMFILES64"
  ; To a 64-bit installer $PROGRAMFILES32 is the same folder.
  ReadEnvStr $2 "ProgramFiles(x86)"
  !insertmacro refuseBelow "$2"
FunctionEnd

Function .onInit
  ; No page asks then.
  ${If} ${Silent}
    Call refuseProgramFolders
  ${EndIf}
FunctionEnd

; Empty when there is no such file.
!macro sizeOf FILE SIZE
  StrCpy ${SIZE} ""
  ${If} ${FileExists} "${FILE}"
    ClearErrors
    FileOpen $9 "${FILE}" r
    ${IfNot} ${Errors}
      FileSeek $9 0 END ${SIZE}
      FileClose $9
    ${EndIf}
  ${EndIf}
!macroend

!macro stateOf FILE STATE
  !insertmacro sizeOf "${FILE}" ${STATE}
  ${If} ${STATE} != ""
    GetFileTime "${FILE}" $8 $9
    StrCpy ${STATE} "${STATE} $8 $9"
  ${EndIf}
!macroend

; The suite's own report engine stays: free is what is not there, or lies as we left it.
!macro judge NAME IS_FREE
  StrCpy ${IS_FREE} 0
  ReadRegStr $0 HKLM "${MEMORY}" "$INSTDIR\${NAME}"
  !insertmacro stateOf "$INSTDIR\${NAME}" $1
  ${IfNot} ${FileExists} "$INSTDIR\${NAME}"
    StrCpy ${IS_FREE} 1
  ${ElseIf} $1 != ""
  ${AndIf} $0 == $1
    StrCpy ${IS_FREE} 1
  ${EndIf}
!macroend

!macro remember NAME
  !insertmacro stateOf "$INSTDIR\${NAME}" $1
  WriteRegStr HKLM "${MEMORY}" "$INSTDIR\${NAME}" $1
!macroend

; The set-up of the program makes copies, where the suite has no such program.
!macro judgeCopy COPY PROGRAM IS_COPIED
  StrCpy ${IS_COPIED} 0
  !insertmacro sizeOf "$INSTDIR\${COPY}" $0
  !insertmacro sizeOf "$INSTDIR\${PROGRAM}" $1
  ${If} $0 != ""
  ${AndIf} $0 = $1
    StrCpy ${IS_COPIED} 1
  ${EndIf}
!macroend

; Windows lets nobody write to a program that runs. One that is read-only tells nothing, and may be the suite's.
!macro refuseWhileRunning NAME
  ${Do}
    ${IfNot} ${FileExists} "$INSTDIR\${NAME}"
      ${Break}
    ${EndIf}
    ${GetFileAttributes} "$INSTDIR\${NAME}" "READONLY" $0
    ${If} $0 == 1
      ${Break}
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\${NAME}" a
    ${IfNot} ${Errors}
      FileClose $0
      ${Break}
    ${EndIf}
    ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "同意書管理か帳票の画面が開いています。すべて終了してから「再試行」を押してください。" /SD IDCANCEL IDCANCEL`
      SetErrorLevel 2
      Abort
    ${EndIf}
  ${Loop}
!macroend

!macro lookAround
  !insertmacro judge wfrfv10.exe $formsAreFree
  !insertmacro judge wfrimg10.exe $imagesAreFree
  !insertmacro judgeCopy Main.exe douisho-menu.exe $menuIsCopied
  StrCpy $formsAreCopied 0
  ${If} $formsAreFree = 1
    !insertmacro judgeCopy WrVb6Viewer.exe wfrfv10.exe $formsAreCopied
  ${EndIf}
  !insertmacro refuseWhileRunning douisho.exe
  !insertmacro refuseWhileRunning douisho-menu.exe
  !insertmacro refuseWhileRunning wfrfv10.exe
  !insertmacro refuseWhileRunning wfrimg10.exe
  ${If} $menuIsCopied = 1
    !insertmacro refuseWhileRunning Main.exe
  ${EndIf}
  ${If} $formsAreCopied = 1
    !insertmacro refuseWhileRunning WrVb6Viewer.exe
  ${EndIf}
!macroend

Section
  SetRegView 64
  SetShellVarContext all
  !insertmacro lookAround
  SetOutPath "$INSTDIR"
  File "${SOURCE}/douisho.exe"
  File "${SOURCE}/douisho-menu.exe"
  File "${SOURCE}/douisho-sample.exe"
  File "${SOURCE}/README.ja.md"
  File "${SOURCE}/CHANGES.ja.md"
  File "${SOURCE}/LICENSE"
  File /r "${SOURCE}/licences"
  ${If} $formsAreFree = 1
    File "${SOURCE}/wfrfv10.exe"
    !insertmacro remember wfrfv10.exe
  ${EndIf}
  ${If} $imagesAreFree = 1
    File "${SOURCE}/wfrimg10.exe"
    !insertmacro remember wfrimg10.exe
  ${EndIf}
  ${If} $menuIsCopied = 1
    CopyFiles /SILENT "$INSTDIR\douisho-menu.exe" "$INSTDIR\Main.exe"
  ${EndIf}
  ${If} $formsAreCopied = 1
    CopyFiles /SILENT "$INSTDIR\wfrfv10.exe" "$INSTDIR\WrVb6Viewer.exe"
  ${EndIf}
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKLM "${MEMORY}" "Folder" "$INSTDIR"
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
  !insertmacro lookAround
  Delete "$INSTDIR\douisho.exe"
  Delete "$INSTDIR\douisho-menu.exe"
  Delete "$INSTDIR\douisho-sample.exe"
  ${If} $formsAreFree = 1
    Delete "$INSTDIR\wfrfv10.exe"
  ${EndIf}
  ${If} $imagesAreFree = 1
    Delete "$INSTDIR\wfrimg10.exe"
  ${EndIf}
  ${If} $menuIsCopied = 1
    Delete "$INSTDIR\Main.exe"
  ${EndIf}
  ${If} $formsAreCopied = 1
    Delete "$INSTDIR\WrVb6Viewer.exe"
  ${EndIf}
  Delete "$INSTDIR\README.ja.md"
  Delete "$INSTDIR\CHANGES.ja.md"
  Delete "$INSTDIR\LICENSE"
  RMDir /r "$INSTDIR\licences"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\同意書管理.lnk"
  Delete "$DESKTOP\同意書管理.lnk"
  DeleteRegKey HKLM "${UNINSTALL}"
  DeleteRegKey HKLM "${MEMORY}"
SectionEnd
