; SPDX-License-Identifier: GPL-3.0-or-later
;
; Installs for one user without administrator rights. packaging/windows/make-packages.cmake.in sets
; VERSION, ICON, PICTURE (for the last page), FILES (the folder of the files to install), KILOBYTES
; (the size of Vaskel.exe) and INSTALLER (the output file).

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
Var hash
Var signer

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
LangString nobody ${LANG_ENGLISH} "nobody"
LangString nobody ${LANG_SIMPCHINESE} "无"
LangString unknown ${LANG_ENGLISH} "unknown"
LangString unknown ${LANG_SIMPCHINESE} "未知"
LangString copy ${LANG_ENGLISH} "Everything64.dll lies beside this installer. Vaskel would run it each time it starts.$\n$\nSigned by: $signer$\nSHA-256: $hash$\n$\nInstall it?"
LangString copy ${LANG_SIMPCHINESE} "此安装程序旁边有 Everything64.dll。Vaskel 每次启动时都会运行它。$\n$\n签名者：$signer$\nSHA-256：$hash$\n$\n要安装它吗？"
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

!define LIBRARY "$INSTDIR\Everything64.dll"
!define CANDIDATE "${LIBRARY}.new"

; Sets $hash to the SHA-256 of the candidate.
Function hashCandidate
    StrCpy $hash ""
    System::Call 'kernel32::CreateFileW(w "${CANDIDATE}", i 0x80000000, i 1, p 0, i 3, i 0, p 0) p .r0'
    System::Call 'kernel32::GetFileSize(p r0, p 0) i .r1'
    System::Alloc $1
    Pop $2
    System::Call 'kernel32::ReadFile(p r0, p r2, i r1, *i .r3, p 0)'
    System::Call 'kernel32::CloseHandle(p r0)'
    ; 24 is PROV_RSA_AES, 0xF0000000 CRYPT_VERIFYCONTEXT, 0x800C CALG_SHA_256, 2 HP_HASHVAL.
    System::Call 'advapi32::CryptAcquireContextW(*p .r4, p 0, p 0, i 24, i 0xF0000000)'
    System::Call 'advapi32::CryptCreateHash(p r4, i 0x800C, p 0, i 0, *p .r5)'
    System::Call 'advapi32::CryptHashData(p r5, p r2, i r3, i 0)'
    System::Alloc 32
    Pop $6
    System::Call 'advapi32::CryptGetHashParam(p r5, i 2, p r6, *i 32, i 0) i .r7'
    ${If} $7 <> 0
    ${AndIf} $1 = $3
        ${For} $7 0 31
            System::Int64Op $6 + $7
            Pop $8
            System::Call '*$8(&i1 .r9)'
            IntOp $9 $9 & 0xFF
            IntFmt $9 "%02x" $9
            StrCpy $hash "$hash$9"
        ${Next}
    ${Else}
        StrCpy $hash "$(unknown)"
    ${EndIf}
    System::Call 'advapi32::CryptDestroyHash(p r5)'
    System::Call 'advapi32::CryptReleaseContext(p r4, i 0)'
    System::Free $2
    System::Free $6
FunctionEnd

; Sets $signer to the name in the candidate's certificate if Windows trusts the signature.
Function findSigner
    StrCpy $signer "$(nobody)"
    ; WINTRUST_FILE_INFO; WINTRUST_DATA without a dialog (2) and for a file (1), which fetches
    ; nothing from the network (0x1000); WINTRUST_ACTION_GENERIC_VERIFY_V2.
    System::Call '*(&w${NSIS_MAX_STRLEN} "${CANDIDATE}") p .r0'
    System::Call '*(i 32, i 0, p r0, p 0, p 0) p .r1'
    System::Call '*(i 88, i 0, p 0, p 0, i 2, i 0, i 1, i 0, p r1, i 0, i 0, p 0, p 0, i 0x1000, i 0, p 0) p .r2'
    System::Call '*(&g16 "{00AAC56B-CD44-11d0-8CC2-00C04FC295EE}") p .r3'
    System::Call 'wintrust::WinVerifyTrust(p -1, p r3, p r2) i .r4'
    ${If} $4 == 0
        StrCpy $signer "$(unknown)"
        ; A file (1) with an embedded PKCS #7 signature (0x400) in binary (2).
        System::Call 'crypt32::CryptQueryObject(i 1, p r0, i 0x400, i 2, i 0, p 0, p 0, p 0, *p .r5, *p .r6, p 0) i .r4'
        ${If} $4 <> 0
            ; 7 is CMSG_SIGNER_CERT_INFO_PARAM, 4 CERT_NAME_SIMPLE_DISPLAY_TYPE.
            System::Call 'crypt32::CryptMsgGetParam(p r6, i 7, i 0, p 0, *i .r7)'
            System::Alloc $7
            Pop $8
            System::Call 'crypt32::CryptMsgGetParam(p r6, i 7, i 0, p r8, *i r7)'
            System::Call 'crypt32::CertGetSubjectCertificateFromStore(p r5, i 0x10001, p r8) p .r9'
            System::Call 'crypt32::CertGetNameStringW(p r9, i 4, i 0, p 0, w .s, i ${NSIS_MAX_STRLEN})'
            Pop $signer
            System::Call 'crypt32::CertFreeCertificateContext(p r9)'
            System::Call 'crypt32::CryptMsgClose(p r6)'
            System::Call 'crypt32::CertCloseStore(p r5, i 0)'
            System::Free $8
        ${EndIf}
    ${EndIf}
    System::Free $0
    System::Free $1
    System::Free $2
    System::Free $3
FunctionEnd

; Whoever can write to the folder of the installer could put a library there. Examine a copy in the
; folder of Vaskel, where nobody else can replace it. A silent installation installs the library
; without a question.
Function offerLibrary
    System::Call 'kernel32::CopyFileW(w "$EXEDIR\Everything64.dll", w "${CANDIDATE}", i 0) i .r0'
    ${If} $0 = 0
        Return
    ${EndIf}
    Call hashCandidate
    Call findSigner
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "$(copy)" /SD IDYES IDYES install
    Delete "${CANDIDATE}"
    Return
install:
    Delete "${LIBRARY}"
    Rename "${CANDIDATE}" "${LIBRARY}"
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "HasCopiedLibrary" 1
FunctionEnd

Section
    !insertmacro waitForTheEnd
    SetOutPath "$INSTDIR"
    File /r "${FILES}/*"

    ; The user may have put the library beside the installer.
    ${If} ${FileExists} "$EXEDIR\Everything64.dll"
    ${AndIf} $EXEDIR != $INSTDIR
        Call offerLibrary
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
    ${If} ${FileExists} "${LIBRARY}"
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
    RMDir /r "$LOCALAPPDATA\Vaskel\cache"
    RMDir "$LOCALAPPDATA\Vaskel"
    ; Nothing in it is the user's.
    Delete "$APPDATA\Vaskel\instance.lock"

    DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
