; SPDX-License-Identifier: GPL-3.0-or-later
;
; Installs for one user without administrator rights. packaging/windows/package.cmake sets VERSION,
; ICON, PICTURE (for the last page), FILES (the files to install), KILOBYTES (their size) and
; INSTALLER (the output file).

Target amd64-unicode
Unicode true

!include MUI2.nsh
!include LogicLib.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Vaskel"
!define RUN_KEY "Software\Microsoft\Windows\CurrentVersion\Run"

Name "Vaskel"
OutFile "${INSTALLER}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Vaskel"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS Win10
BrandingText "Vaskel ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Vaskel"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Vaskel"
VIAddVersionKey "LegalCopyright" "GPL-3.0-or-later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_FINISHPAGE_TEXT "$finishText"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "$finishAction"
!define MUI_FINISHPAGE_RUN_FUNCTION finish
!define MUI_UNCONFIRMPAGE_TEXT_TOP "$(stays)"

Var finishText
Var finishAction

!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_PAGE_CUSTOMFUNCTION_PRE prepareFinish
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

; Windows' language selects one; the first is the default.
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE SimpChinese

LangString running ${LANG_ENGLISH} "Vaskel is running. Quit it by the menu of its icon in the notification area, and try again."
LangString running ${LANG_SIMPCHINESE} "Vaskel 正在运行。请用通知区域图标的菜单退出，然后重试。"
LangString ready ${LANG_ENGLISH} "Vaskel is installed. Ctrl+Alt+Space brings its window up and hides it."
LangString ready ${LANG_SIMPCHINESE} "Vaskel 已安装。按 Ctrl+Alt+Space 显示或隐藏窗口。"
LangString start ${LANG_ENGLISH} "Start Vaskel"
LangString start ${LANG_SIMPCHINESE} "启动 Vaskel"
LangString lacking ${LANG_ENGLISH} "Vaskel is installed, but it cannot start without Everything64.dll of the Everything SDK. Put that file beside Vaskel.exe; README.txt tells where it is found."
LangString lacking ${LANG_SIMPCHINESE} "Vaskel 已安装，但缺少 Everything SDK 中的 Everything64.dll，无法启动。请把该文件放在 Vaskel.exe 旁边；README.txt 说明了从哪里获取。"
LangString open ${LANG_ENGLISH} "Open the folder of Vaskel.exe"
LangString open ${LANG_SIMPCHINESE} "打开 Vaskel.exe 所在的文件夹"
LangString stays ${LANG_ENGLISH} "Vaskel will be removed. Your tasks, pinned programs and log stay in $APPDATA\Vaskel, your preferences in the registry under HKEY_CURRENT_USER\Software\Vaskel."
LangString stays ${LANG_SIMPCHINESE} "即将卸载 Vaskel。您的任务、固定的程序和日志保留在 $APPDATA\Vaskel 中，设置保留在注册表的 HKEY_CURRENT_USER\Software\Vaskel 中。"

; The file of a running program cannot be opened for writing.
!macro waitForTheEnd
    ${While} ${FileExists} "$INSTDIR\Vaskel.exe"
        ClearErrors
        FileOpen $0 "$INSTDIR\Vaskel.exe" a
        ${IfNot} ${Errors}
            FileClose $0
            ${Break}
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(running)" /SD IDCANCEL IDRETRY +2
        Abort
    ${EndWhile}
!macroend

Section
    !insertmacro waitForTheEnd
    SetOutPath "$INSTDIR"
    File /r "${FILES}/*"

    ; The user may have put the library beside the installer.
    ${If} ${FileExists} "$EXEDIR\Everything64.dll"
    ${AndIf} $EXEDIR != $INSTDIR
        CopyFiles /SILENT "$EXEDIR\Everything64.dll" "$INSTDIR"
        WriteRegDWORD HKCU "${UNINSTALL_KEY}" "HasCopiedLibrary" 1
    ${EndIf}

    WriteUninstaller "$INSTDIR\Uninstall.exe"
    CreateShortcut "$SMPROGRAMS\Vaskel.lnk" "$INSTDIR\Vaskel.exe"

    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Vaskel"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Vaskel.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Vaskel"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Function prepareFinish
    SearchPath $0 "Everything64.dll"
    ${If} ${FileExists} "$INSTDIR\Everything64.dll"
    ${OrIf} $0 != ""
        StrCpy $finishText "$(ready)"
        StrCpy $finishAction "$(start)"
    ${Else}
        StrCpy $finishText "$(lacking)"
        StrCpy $finishAction "$(open)"
    ${EndIf}
FunctionEnd

Function finish
    ${If} $finishAction == "$(start)"
        Exec '"$INSTDIR\Vaskel.exe"'
    ${Else}
        ExecShell "open" "$INSTDIR"
    ${EndIf}
FunctionEnd

Section Uninstall
    !insertmacro waitForTheEnd
    Delete "$INSTDIR\Vaskel.exe"
    Delete "$INSTDIR\README.txt"
    RMDir /r "$INSTDIR\licenses"
    ReadRegDWORD $0 HKCU "${UNINSTALL_KEY}" "HasCopiedLibrary"
    ${If} $0 == 1
        Delete "$INSTDIR\Everything64.dll"
    ${EndIf}
    Delete "$INSTDIR\Uninstall.exe"
    ; Fails if the user has files of their own in it.
    RMDir "$INSTDIR"

    Delete "$SMPROGRAMS\Vaskel.lnk"
    ReadRegStr $0 HKCU "${RUN_KEY}" "Vaskel"
    ${If} $0 == "$INSTDIR\Vaskel.exe"
        DeleteRegValue HKCU "${RUN_KEY}" "Vaskel"
    ${EndIf}

    ; The icon cache and the files of a failed update.
    RMDir /r "$TEMP\Vaskel\icons"
    RMDir "$TEMP\Vaskel"
    Delete "$TEMP\Vaskel_update.exe"
    Delete "$TEMP\Vaskel_updater.bat"

    DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
