; The installer, made by packaging/windows/make_installer with the definitions VERSION, ICON, PICTURE (beside the last
; page), SETUP (the file to make) and FILES (macros that list the installed files).
; Exit status: 0 done, 1 cancelled, 2 not done (a running desk, a file that can't be written), 3 no administrator rights.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS Win10
; no rights are needed for one user; for all users it starts itself again with them
RequestExecutionLevel user

!define PRODUCT "VELOTRACE Desk"
!define PUBLISHER "The VELOTRACE Desk authors"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define NOT_DONE 2
!define NO_RIGHTS 3

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include x64.nsh
!include "${FILES}"

Name "${PRODUCT}"
OutFile "${SETUP}"
BrandingText "${PRODUCT} ${VERSION}"
VIProductVersion "${VERSION}.0.0"
VIAddVersionKey ProductName "${PRODUCT}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileDescription "Setup of ${PRODUCT}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey CompanyName "${PUBLISHER}"
VIAddVersionKey LegalCopyright "MIT licence"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start ${PRODUCT}"
!define MUI_FINISHPAGE_RUN_FUNCTION start_desk
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\manual.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Open the manual"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
Page custom show_users leave_users
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
UninstPage custom un.show_settings un.leave_settings
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var all_users       ; 1 or 0
Var chosen_folder   ; from /D, else empty
Var delete_settings ; 1 or 0
Var answer          ; of a page's control

; Leaves "Admin" in $0 if this process has administrator rights.
!macro get_account
    UserInfo::GetAccountType
    Pop $0
!macroend

; Registry and Start menu of all users or of this user, and the folder of an installed desk or else the usual one.
Function choose_users
    ${If} $all_users == 1
        SetShellVarContext all
        StrCpy $INSTDIR "$PROGRAMFILES64\${PRODUCT}"
    ${Else}
        SetShellVarContext current
        StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${PRODUCT}"
    ${EndIf}
    ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" InstallLocation
    ${If} $0 != ""
        StrCpy $INSTDIR $0
    ${EndIf}
    ${If} $chosen_folder != ""
        StrCpy $INSTDIR $chosen_folder
    ${EndIf}
FunctionEnd

Function .onInit
    ${IfNot} ${RunningX64}
        MessageBox MB_ICONSTOP|MB_OK "${PRODUCT} needs a 64-bit Windows." /SD IDOK
        SetErrorLevel ${NOT_DONE}
        Quit
    ${EndIf}
    SetRegView 64
    StrCpy $chosen_folder $INSTDIR
    StrCpy $all_users 0
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/ALLUSERS" $1
    ${IfNot} ${Errors}
        StrCpy $all_users 1
        !insertmacro get_account
        ${If} $0 != "Admin"
            Call start_with_rights
            SetErrorLevel ${NO_RIGHTS}
            Quit
        ${EndIf}
    ${EndIf}
    Call choose_users
FunctionEnd

; Does nothing in silent mode.
Function start_with_rights
    ${IfNot} ${Silent}
        ClearErrors
        ExecShell "runas" "$EXEPATH" "/ALLUSERS"
        ${IfNot} ${Errors}
            SetErrorLevel 0
            Quit
        ${EndIf}
    ${EndIf}
FunctionEnd

Function show_users
    !insertmacro MUI_HEADER_TEXT "Who will use it?" "Settings, port files and rescued files are separate for each user in either case."
    nsDialogs::Create 1018
    Pop $0
    ${NSD_CreateRadioButton} 0 10u 100% 14u "Only &me: needs no administrator rights"
    Pop $1
    ${NSD_CreateRadioButton} 0 30u 100% 14u "&All users of this computer: needs administrator rights"
    Pop $answer
    ${If} $all_users == 1
        ${NSD_Check} $answer
    ${Else}
        ${NSD_Check} $1
    ${EndIf}
    nsDialogs::Show
FunctionEnd

Function leave_users
    ${NSD_GetState} $answer $all_users
    ${If} $all_users == 1
        !insertmacro get_account
        ${If} $0 != "Admin"
            Call start_with_rights
            MessageBox MB_ICONINFORMATION|MB_OK "Without administrator rights the desk can only be installed for you."
            Abort
        ${EndIf}
    ${EndIf}
    Call choose_users
FunctionEnd

; A program that runs can't be written. The uninstaller itself runs during an upgrade.
!macro wait_for_programs un
Function ${un}wait_for_programs
    again:
    StrCpy $1 ""
    FindFirst $2 $3 "$INSTDIR\*.exe"
    ${DoWhile} $3 != ""
        ClearErrors
        FileOpen $4 "$INSTDIR\$3" a
        ${IfNot} ${Errors}
            FileClose $4
        ${ElseIf} $3 != "uninstall.exe"
            StrCpy $1 $3
        ${EndIf}
        FindNext $2 $3
    ${Loop}
    FindClose $2
    ${If} $1 != ""
        MessageBox MB_ICONEXCLAMATION|MB_RETRYCANCEL \
            "${PRODUCT} is running ($1), or you are not allowed to change its folder.$\n$\nClose it, then press Retry." \
            /SD IDCANCEL IDRETRY again
        SetErrorLevel ${NOT_DONE}
        Quit
    ${EndIf}
FunctionEnd
!macroend
!insertmacro wait_for_programs ""
!insertmacro wait_for_programs "un."

Section
    Call wait_for_programs
    ; an older version, whose files may have other names
    ${If} ${FileExists} "$INSTDIR\uninstall.exe"
        DetailPrint "Removing the installed version"
        ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR' $0
        ${If} $0 != 0
            MessageBox MB_ICONSTOP|MB_OK "The installed version can't be removed from $INSTDIR." /SD IDOK
            SetErrorLevel ${NOT_DONE}
            Quit
        ${EndIf}
    ${EndIf}

    ClearErrors
    !insertmacro install_files
    WriteUninstaller "$INSTDIR\uninstall.exe"
    ${If} ${Errors}
        MessageBox MB_ICONSTOP|MB_OK "The desk can't be written to $INSTDIR." /SD IDOK
        SetErrorLevel ${NOT_DONE}
        Quit
    ${EndIf}

    SetOutPath "$INSTDIR"
    CreateDirectory "$SMPROGRAMS\${PRODUCT}"
    CreateShortCut "$SMPROGRAMS\${PRODUCT}\${PRODUCT}.lnk" "$INSTDIR\velotrace.exe"
    CreateShortCut "$SMPROGRAMS\${PRODUCT}\Manual.lnk" "$INSTDIR\manual.html"
    ${If} ${FileExists} "$INSTDIR\Start training.cmd"
        CreateShortCut "$SMPROGRAMS\${PRODUCT}\Training.lnk" "$INSTDIR\Start training.cmd" "" "$INSTDIR\velotrace.exe"
    ${EndIf}

    WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "${PRODUCT}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher "${PUBLISHER}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\velotrace.exe"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
    WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize $0
SectionEnd

; Explorer starts it without this installer's rights.
Function start_desk
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\velotrace.exe"'
FunctionEnd

; The registry says whether this desk was installed for all users.
Function un.onInit
    SetRegView 64
    StrCpy $all_users 0
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" InstallLocation
    ${If} $0 == $INSTDIR
        StrCpy $all_users 1
    ${EndIf}
    StrCpy $delete_settings 0
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/DELETESETTINGS" $1
    ${IfNot} ${Errors}
        StrCpy $delete_settings 1
    ${EndIf}
    ${If} $all_users == 1
        !insertmacro get_account
        ${If} $0 != "Admin"
            ${IfNot} ${Silent}
                ClearErrors
                ExecShell "runas" "$INSTDIR\uninstall.exe"
                ${IfNot} ${Errors}
                    Quit
                ${EndIf}
            ${EndIf}
            SetErrorLevel ${NO_RIGHTS}
            Quit
        ${EndIf}
        SetShellVarContext all
    ${EndIf}
FunctionEnd

Function un.show_settings
    !insertmacro MUI_HEADER_TEXT "Remove ${PRODUCT}" "It is removed from $INSTDIR."
    nsDialogs::Create 1018
    Pop $0
    ${NSD_CreateCheckBox} 0 10u 100% 14u "Also delete my &settings, catalogue, port files and rescued files"
    Pop $answer
    ${NSD_CreateLabel} 15u 28u 100% 24u "Files that you have saved yourself always stay."
    Pop $0
    nsDialogs::Show
FunctionEnd

Function un.leave_settings
    ${NSD_GetState} $answer $delete_settings
FunctionEnd

Section Uninstall
    Call un.wait_for_programs
    RMDir /r "$INSTDIR\python\__pycache__"
    !insertmacro uninstall_files
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\${PRODUCT}\*.lnk"
    RMDir "$SMPROGRAMS\${PRODUCT}"
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
    ${If} $delete_settings == 1
        SetShellVarContext current
        Delete "$LOCALAPPDATA\${PRODUCT}\marlo_rs232.ini"
        Delete "$LOCALAPPDATA\${PRODUCT}\timing_pattern.ini"
        Delete "$LOCALAPPDATA\${PRODUCT}\port?.txt"
        Delete "$LOCALAPPDATA\${PRODUCT}\rescued_*.hex"
        RMDir "$LOCALAPPDATA\${PRODUCT}"
    ${EndIf}
SectionEnd
