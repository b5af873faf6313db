; TSBrowser-Setup.exe. docs/ADMINS.md has its switches and exit codes.
; Built by the target `setup` (setup/CMakeLists.txt), which gives ROOT, STAGE, SIDE, OUT, VERSION, BUILD and TARGET.
!ifdef TARGET
  Target ${TARGET}
!endif
Unicode true
ManifestDPIAware true
RequestExecutionLevel user ; a setup for one user asks nobody; for all users it starts itself again, elevated
SetCompressor /SOLID lzma

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include WinVer.nsh
!include WordFunc.nsh
!include Settings.nsh
!insertmacro TakeBackFunctions "un."

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
; Runs UserSettings.exe once for each user who logs on, and again when the version here has grown.
!define EACH_USER_KEY "Software\Microsoft\Active Setup\Installed Components\{6B0C3F5E-51A7-4B0C-9C7D-0E4D8C2A7F31}"
!define LIBRARY_KEY "${PRODUCT_KEY}\Library"

!define CODE_CANCELLED 1
!define CODE_RUNNING 10
!define CODE_NOT_ALLOWED 11
!define CODE_BAD_SWITCH 12
!define CODE_FILES 13
!define CODE_REGISTRATION 14
!define CODE_NEWER 15

Name "${PRODUCT}"
OutFile "${OUT}"
BrandingText "${PRODUCT} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "LegalCopyright" "${PUBLISHER}"
VIAddVersionKey "FileDescription" "${PRODUCT} setup"
VIAddVersionKey "FileVersion" "${VERSION}.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "ProductVersion" "${VERSION}.0"

Var ForAll   ; "1": for every user of the machine
Var Samples  ; where the sample library stands
Var Previous ; the folder of the version that is there already
Var GivenFolder ; of /D, which the command line does not show any more
Var Seconds  ; how long a silent setup waits for the browser to end
Var OnlyMe
Var EveryUser

!define MUI_ICON "${ROOT}/art/icons/app.ico"
!define MUI_UNICON "${ROOT}/art/icons/app.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_ABORTWARNING
!define MUI_LANGDLL_ALLLANGUAGES
!define MUI_LANGDLL_WINDOWTITLE "${PRODUCT}"
!define MUI_LANGDLL_INFO "Language / Sprache / 言語"

Page custom ScopePage LeaveScopePage
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\TSBrowser.exe"
!define MUI_PAGE_CUSTOMFUNCTION_SHOW ShowFinishPage
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"
!insertmacro MUI_LANGUAGE "Japanese"
!insertmacro MUI_RESERVEFILE_LANGDLL
!include Texts.nsh

; ---------------------------------------------------------------------------------------------- switches, beginning

!macro Fail Code Text
  ${IfNot} ${Silent}
    MessageBox MB_OK|MB_ICONSTOP "${Text}"
  ${EndIf}
  SetErrorLevel ${Code}
  Quit
!macroend

; The value of a switch; without it what an earlier setup noted; else "".
!macro ReadSwitch Variable Switch Noted
  Push "/${Switch}="
  Call SwitchValue
  Pop ${Variable}
  ${If} ${Errors}
    ReadRegStr ${Variable} SHCTX "${PRODUCT_KEY}" "${Noted}"
  ${EndIf}
!macroend

!macro IfSwitch un Switch
  Push "/${Switch}"
  Call ${un}SwitchValue
  Pop $0
  ${IfNot} ${Errors}
!macroend

; "/NAME=" -> what follows it on the command line; the error flag says that it is not there. Quotes may stand around the
; value, /NAME="a b", or around both, "/NAME=a b": which of them depends on who starts it.
!macro SwitchFunction un
Function ${un}SwitchValue
  Exch $0
  Push $1
  Push $2
  Push $3
  Push $4
  Push $5
  ${GetParameters} $1
  StrLen $2 $0
  StrCpy $3 0
  StrCpy $5 " " ; the character before
  ${Do}
    StrCpy $4 $1 $2 $3
    ${If} $4 == ""
      StrCpy $0 ""
      StrCpy $3 -1
      ${Break}
    ${EndIf}
    ${If} $4 == $0
      ${If} $5 == " "
      ${OrIf} $5 == '"'
        IntOp $3 $3 + $2
        StrCpy $4 $1 1 $3
        ${If} $4 == '"'
          StrCpy $5 '"'
          IntOp $3 $3 + 1
        ${EndIf}
        StrCpy $0 ""
        ${Do}
          StrCpy $4 $1 1 $3
          ${If} $4 == ""
          ${OrIf} $4 == $5
            ${Break}
          ${EndIf}
          StrCpy $0 "$0$4"
          IntOp $3 $3 + 1
        ${Loop}
        ${Break}
      ${EndIf}
    ${EndIf}
    StrCpy $5 $1 1 $3
    IntOp $3 $3 + 1
  ${Loop}
  ClearErrors
  ${If} $3 = -1
    SetErrors
  ${EndIf}
  Pop $5
  Pop $4
  Pop $3
  Pop $2
  Pop $1
  Exch $0
FunctionEnd
!macroend
!insertmacro SwitchFunction ""
!insertmacro SwitchFunction "un."

Function .onInit
  UserInfo::GetAccountType
  Pop $R8

  StrCpy $ForAll 0
  ReadRegStr $0 HKLM "${PRODUCT_KEY}" "Installed Path"
  ${If} $0 != ""
    StrCpy $ForAll 1 ; an upgrade stays what it was
  ${EndIf}
  !insertmacro IfSwitch "" "CURRENTUSER"
    StrCpy $ForAll 0
  ${EndIf}
  !insertmacro IfSwitch "" "ALLUSERS"
    StrCpy $ForAll 1
  ${EndIf}
  ${If} ${Silent}
  ${AndIf} $ForAll == 1
  ${AndIf} $R8 != "Admin"
    SetErrorLevel ${CODE_NOT_ALLOWED}
    Quit
  ${EndIf}

  StrCpy $Seconds 60
  !insertmacro IfSwitch "" "WAIT="
    StrCpy $Seconds $0
  ${EndIf}

  StrCpy $GivenFolder $INSTDIR ; /D has set it already
  Call ChooseScope
  ${IfNot} ${Silent}
    Call AskLanguage
    ${If} $ForAll == 1
    ${AndIf} $R8 != "Admin"
      Call StartElevated
    ${EndIf}
  ${EndIf}
FunctionEnd

; Everything that depends on whom it is for: where what is noted, and what was chosen before.
Function ChooseScope
  ${If} $ForAll == 1
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
  ReadRegStr $Previous SHCTX "${PRODUCT_KEY}" "Installed Path"
  ${If} $GivenFolder != ""
    StrCpy $INSTDIR $GivenFolder
  ${ElseIf} $Previous != ""
    StrCpy $INSTDIR $Previous
  ${ElseIf} $ForAll == 1
    StrCpy $INSTDIR "${PROGRAM_FILES}\${PRODUCT}"
  ${Else}
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${PRODUCT}"
  ${EndIf}

  !insertmacro ReadSwitch $Library "TEMPLATES" "Templates Path"
  !insertmacro ReadSwitch $PictureFolder "PICTURES" "Profile Pictures Path"
  !insertmacro ReadSwitch $UpdateService "UPDATES" "Update Service"
  !insertmacro ReadSwitch $TextLanguage "LANGUAGE" "Language"
  ${If} $TextLanguage == ""
    StrCpy $TextLanguage "en"
    ${If} $LANGUAGE == ${LANG_GERMAN}
      StrCpy $TextLanguage "de"
    ${ElseIf} $LANGUAGE == ${LANG_JAPANESE}
      StrCpy $TextLanguage "ja"
    ${EndIf}
  ${ElseIf} $TextLanguage == "de"
    StrCpy $LANGUAGE ${LANG_GERMAN}
  ${ElseIf} $TextLanguage == "ja"
    StrCpy $LANGUAGE ${LANG_JAPANESE}
  ${ElseIf} $TextLanguage == "en"
    StrCpy $LANGUAGE ${LANG_ENGLISH}
  ${Else}
    !insertmacro Fail ${CODE_BAD_SWITCH} "/LANGUAGE=$TextLanguage"
  ${EndIf}

  ; Two leading separators or a drive: anything else would depend on the folder that the browser is started in.
  StrCpy $0 $Library 2
  StrCpy $1 $Library 1 1
  ${If} $Library != ""
  ${AndIf} $0 != "\\"
  ${AndIf} $1 != ":"
    !insertmacro Fail ${CODE_BAD_SWITCH} "/TEMPLATES=$Library"
  ${EndIf}
FunctionEnd

; Whoever starts setup with pages chooses a language once; it is setup's own and the program's.
Function AskLanguage
  Push "/LANGUAGE="
  Call SwitchValue
  Pop $0
  ${IfNot} ${Errors}
    Return
  ${EndIf}
  ReadRegStr $0 SHCTX "${PRODUCT_KEY}" "Language"
  ${If} $0 != ""
    Return
  ${EndIf}
  !insertmacro MUI_LANGDLL_DISPLAY
  StrCpy $TextLanguage "en"
  ${If} $LANGUAGE == ${LANG_GERMAN}
    StrCpy $TextLanguage "de"
  ${ElseIf} $LANGUAGE == ${LANG_JAPANESE}
    StrCpy $TextLanguage "ja"
  ${EndIf}
FunctionEnd

; A setup for all users needs an administrator's rights: the system asks for them. They may be another account's, and
; with them that account's settings: the user at the screen gets his own here.
Function StartElevated
  ${GetParameters} $0
  StrCpy $0 "/ALLUSERS /LANGUAGE=$TextLanguage $0" ; of a switch that is there twice the first one counts
  ${If} $GivenFolder != ""
    StrCpy $0 "$0 /D=$GivenFolder"
  ${EndIf}
  HideWindow
  ClearErrors
  ExecShellWait "runas" "$EXEPATH" "$0"
  ${If} ${Errors}
    !insertmacro Fail ${CODE_NOT_ALLOWED} "$(NotAllowed)"
  ${EndIf}
  ReadRegStr $0 HKLM "${PRODUCT_KEY}" "Installed Path"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\UserSettings.exe"
    ExecWait '"$0\UserSettings.exe" /S'
  ${EndIf}
  SetErrorLevel 0
  Quit
FunctionEnd

; ------------------------------------------------------------------------------------------------------------ pages

Function ScopePage
  ${If} $Previous != ""
    Abort ; an upgrade stays what it was
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "$(ScopeTitle)" "$(ScopeSubtitle)"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 10u 20u 90% 14u "$(ScopeMe)"
  Pop $OnlyMe
  ${NSD_CreateRadioButton} 10u 42u 90% 14u "$(ScopeAll)"
  Pop $EveryUser
  ${If} $ForAll == 1
    ${NSD_Check} $EveryUser
  ${Else}
    ${NSD_Check} $OnlyMe
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function LeaveScopePage
  ${NSD_GetState} $EveryUser $0
  StrCpy $1 $ForAll
  StrCpy $ForAll $0
  UserInfo::GetAccountType
  Pop $2
  ${If} $ForAll == 1
  ${AndIf} $2 != "Admin"
    Call StartElevated
  ${EndIf}
  ${If} $ForAll != $1
    Push $TextLanguage ; chosen a moment ago
    Call ChooseScope
    Pop $TextLanguage
  ${EndIf}
FunctionEnd

; After a setup for all users the browser would start with the administrator's rights, and perhaps as another user.
Function ShowFinishPage
  ${If} $ForAll == 1
    ${NSD_Uncheck} $mui.FinishPage.Run
    ShowWindow $mui.FinishPage.Run ${SW_HIDE}
  ${EndIf}
FunctionEnd

; --------------------------------------------------------------------------------------------------- the sample library

; What tells a file that setup wrote from one that the user has worked on since: its time and size.
!macro MarkFunction un
Function ${un}MarkOf ; path -> mark
  Exch $0
  Push $1
  Push $2
  GetFileTime $0 $1 $2
  FileOpen $0 $0 r
  StrCpy $1 "$1 $2"
  FileSeek $0 0 END $2
  FileClose $0
  StrCpy $0 "$1 $2"
  Pop $2
  Pop $1
  Exch $0
FunctionEnd
!macroend
!insertmacro MarkFunction ""
!insertmacro MarkFunction "un."

; Copies the folder $R1 (below the unpacked library; "" or with "\" at its end), file by file.
Function InstallSamples
  Push $R2
  Push $R3
  FindFirst $R2 $R3 "$PLUGINSDIR\Library\$R1*.*"
  ${DoWhile} $R3 != ""
    ${If} $R3 != "."
    ${AndIf} $R3 != ".."
      ${If} ${FileExists} "$PLUGINSDIR\Library\$R1$R3\*.*"
        Push $R1
        StrCpy $R1 "$R1$R3\"
        Call InstallSamples
        Pop $R1
      ${Else}
        StrCpy $0 "$R1$R3"
        Call InstallSample
      ${EndIf}
    ${EndIf}
    FindNext $R2 $R3
  ${Loop}
  FindClose $R2
  Pop $R3
  Pop $R2
FunctionEnd

; A sample that the user changed stays; one that he deleted or renamed does not come back.
Function InstallSample
  ReadRegStr $1 SHCTX "${LIBRARY_KEY}" "$0"
  ${If} ${FileExists} "$Samples\$0"
    Push "$Samples\$0"
    Call MarkOf
    Pop $2
    ${If} $1 != $2
      Return
    ${EndIf}
    ClearErrors
    Delete "$Samples\$0"
    ${If} ${Errors} ; somebody has it open: the next setup brings it
      Return
    ${EndIf}
  ${ElseIf} $1 != ""
    Return
  ${EndIf}
  ${GetParent} "$Samples\$0" $3
  CreateDirectory $3
  ; A copy gets its folder's permissions. Moved there, it would keep those of the administrator's temporary folder.
  System::Call 'kernel32::CopyFile(t "$PLUGINSDIR\Library\$0", t "$Samples\$0", i 1) i .r2'
  ${If} $2 = 0
    DeleteRegValue SHCTX "${LIBRARY_KEY}" "$0" ; without it the next setup does not take it for deleted by the user
    !insertmacro Fail ${CODE_FILES} "$(FilesFailed)"
  ${EndIf}
  Push "$Samples\$0"
  Call MarkOf
  Pop $2
  WriteRegStr SHCTX "${LIBRARY_KEY}" "$0" "$2"
FunctionEnd

; Removes the samples that nobody changed, and the folders that are empty then. The noted files lie strictly below the
; library; a link to a folder is not followed, because a file behind it has another time.
Function un.RemoveSamples
  ReadRegStr $Samples SHCTX "${PRODUCT_KEY}" "Samples Path"
  ${If} $Samples == ""
    Return
  ${EndIf}
  StrCpy $R0 0
  ${Do}
    ClearErrors
    EnumRegValue $0 SHCTX "${LIBRARY_KEY}" $R0
    ${If} ${Errors}
    ${OrIf} $0 == ""
      ${Break}
    ${EndIf}
    IntOp $R0 $R0 + 1
    ReadRegStr $1 SHCTX "${LIBRARY_KEY}" "$0"
    ${If} ${FileExists} "$Samples\$0"
      Push "$Samples\$0"
      Call un.MarkOf
      Pop $2
      ${If} $1 == $2
        Delete "$Samples\$0"
      ${EndIf}
    ${EndIf}
    StrCpy $3 "$Samples\$0"
    ${Do}
      ${GetParent} $3 $3
      ClearErrors
      RMDir $3 ; goes only when nothing is in it
      ${If} ${Errors}
      ${OrIf} $3 == $Samples
        ${Break}
      ${EndIf}
    ${Loop}
  ${Loop}
FunctionEnd

; ------------------------------------------------------------------------------------------------- a browser that runs

; A program that runs cannot be opened for writing.
!macro AwaitEndFunction un
Function ${un}AwaitEnd
  IntOp $R0 $Seconds * 2
  ${Do}
    ${IfNot} ${FileExists} "$INSTDIR\TSBrowser.exe"
      Return
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\TSBrowser.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      Return
    ${EndIf}
    ${If} ${Silent}
      ${If} $R0 <= 0
        SetErrorLevel ${CODE_RUNNING}
        Quit
      ${EndIf}
      IntOp $R0 $R0 - 1
      Sleep 500
    ${ElseIf} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(Running)" IDCANCEL`
      SetErrorLevel ${CODE_CANCELLED}
      Quit
    ${EndIf}
  ${Loop}
FunctionEnd
!macroend
!insertmacro AwaitEndFunction ""
!insertmacro AwaitEndFunction "un."

; Every comparison of paths is one of long names, whichever name this was started by.
!macro LongNameFunction un
Function ${un}UseLongName
  System::Call 'kernel32::GetLongPathName(t "$INSTDIR", t .r0, i ${NSIS_MAX_STRLEN}) i .r1'
  ${If} $1 <> 0
    StrCpy $INSTDIR $0
  ${EndIf}
FunctionEnd
!macroend
!insertmacro LongNameFunction ""
!insertmacro LongNameFunction "un."

; --------------------------------------------------------------------------------------------------------- installing

Section
  Call UseLongName
  Call RefuseOlder
  ${If} $Previous != ""
    Push $INSTDIR
    StrCpy $INSTDIR $Previous
    Call AwaitEnd
    Pop $INSTDIR
  ${EndIf}
  Call AwaitEnd

  ; A folder that cannot be written is found out while the program still stands in the other one.
  ClearErrors
  SetOutPath "$INSTDIR"
  GetTempFileName $0 "$INSTDIR"
  ${If} ${Errors}
    !insertmacro Fail ${CODE_FILES} "$(FilesFailed)"
  ${EndIf}
  Delete $0
  Call UseLongName ; only a folder that is there has one
  Call RemovePrevious

  ; The library stands beside the program of a single user; of all users, where every one of them may write.
  ReadRegStr $Samples SHCTX "${PRODUCT_KEY}" "Samples Path"
  ${If} $Samples == ""
    ${If} $ForAll == 1
      StrCpy $Samples "$APPDATA\${PRODUCT}\Templates"
    ${Else}
      StrCpy $Samples "$INSTDIR\Templates"
    ${EndIf}
  ${EndIf}
  ${If} $Library == ""
    StrCpy $Library $Samples
  ${EndIf}

  ClearErrors
  File "${STAGE}/TSBrowser.exe"
  File "${STAGE}/UserSettings.exe"
  File /r "${STAGE}/Support"
  File /r "${STAGE}/Help"
  File /r "${STAGE}/Languages"
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  ${If} $TextLanguage == "en"
    Delete "$INSTDIR\TS_RES.dll"
  ${Else}
    CopyFiles /SILENT "$INSTDIR\Languages\$TextLanguage\TS_RES.dll" "$INSTDIR"
  ${EndIf}
  CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\TSBrowser.exe"
  ${If} ${Errors}
    !insertmacro Fail ${CODE_FILES} "$(FilesFailed)"
  ${EndIf}

  ; What the next setup, the uninstaller and UserSettings.exe go by.
  WriteRegStr SHCTX "${PRODUCT_KEY}" "Installed Path" "$INSTDIR"
  WriteRegStr SHCTX "${PRODUCT_KEY}" "Version" "${VERSION}"
  WriteRegStr SHCTX "${PRODUCT_KEY}" "Templates Path" "$Library"
  WriteRegStr SHCTX "${PRODUCT_KEY}" "Profile Pictures Path" "$PictureFolder"
  WriteRegStr SHCTX "${PRODUCT_KEY}" "Update Service" "$UpdateService"
  WriteRegStr SHCTX "${PRODUCT_KEY}" "Language" "$TextLanguage"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\TSBrowser.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize 0 $0
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $0

  ; The administrator's own library is left alone: he keeps it.
  ${If} $Library == $Samples
    WriteRegStr SHCTX "${PRODUCT_KEY}" "Samples Path" "$Samples"
    SetOutPath "$PLUGINSDIR\Library"
    File /r "${STAGE}/Templates/*.*"
    SetOutPath "$INSTDIR"
    CreateDirectory "$Samples"
    StrCpy $R1 ""
    Call InstallSamples
  ${EndIf}

  Call WriteSettings
  StrCpy $0 "/PerUser"
  ${If} $ForAll == 1
    StrCpy $0 ""
    ; The other users get their settings at their next logon. The system compares its number with each user's, part by
    ; part (each below 65536). The time grows even when this was removed in between; the ones keep it free of leading
    ; zeros.
    ${GetTime} "" "LS" $2 $3 $4 $5 $6 $7 $8
    WriteRegStr HKLM "${EACH_USER_KEY}" "" "${PRODUCT}"
    WriteRegStr HKLM "${EACH_USER_KEY}" "StubPath" '"$INSTDIR\UserSettings.exe" /S'
    WriteRegStr HKLM "${EACH_USER_KEY}" "Version" "$4,1$3$2,1$6$7,1$8"
  ${EndIf}
  ExecWait '"$INSTDIR\TSBrowser.exe" /RegServer $0' $1
  ${If} $1 != 0
    !insertmacro Fail ${CODE_REGISTRATION} "$(RegistrationFailed) ($1)"
  ${EndIf}
SectionEnd

; An older version would not know what a newer one has written.
Function RefuseOlder
  ReadRegStr $0 SHCTX "${PRODUCT_KEY}" "Version"
  ${VersionCompare} "$0" "${VERSION}" $1
  ${If} $0 != ""
  ${AndIf} $1 == 1
    !insertmacro Fail ${CODE_NEWER} "$(Newer) ($0)"
  ${EndIf}
FunctionEnd

; A version in another folder makes room for this one.
Function RemovePrevious
  ${If} $Previous != ""
  ${AndIf} $Previous != $INSTDIR
  ${AndIf} ${FileExists} "$Previous\Uninstall.exe"
    ExecWait '"$Previous\Uninstall.exe" /S /WAIT=$Seconds /PROGRAMONLY _?=$Previous' $1
    ${If} $1 != 0
      !insertmacro Fail $1 "$(Running)"
    ${EndIf}
    Delete "$Previous\Uninstall.exe"
    RMDir "$Previous"
  ${EndIf}
FunctionEnd

; ---------------------------------------------------------------------------------------------------------- removing

Function un.onInit
  Call un.UseLongName
  SetShellVarContext all
  StrCpy $ForAll 1
  ReadRegStr $0 HKLM "${PRODUCT_KEY}" "Installed Path"
  ${If} $0 != $INSTDIR
    SetShellVarContext current
    StrCpy $ForAll 0
  ${EndIf}
  ReadRegStr $0 SHCTX "${PRODUCT_KEY}" "Language"
  ${If} $0 == "de"
    StrCpy $LANGUAGE ${LANG_GERMAN}
  ${ElseIf} $0 == "ja"
    StrCpy $LANGUAGE ${LANG_JAPANESE}
  ${Else}
    StrCpy $LANGUAGE ${LANG_ENGLISH}
  ${EndIf}

  UserInfo::GetAccountType
  Pop $0
  ${If} $ForAll == 1
  ${AndIf} $0 != "Admin"
    ${IfNot} ${Silent}
      ClearErrors
      ExecShell "runas" "$INSTDIR\Uninstall.exe"
      ${IfNot} ${Errors}
        Quit
      ${EndIf}
    ${EndIf}
    !insertmacro Fail ${CODE_NOT_ALLOWED} "$(NotAllowed)"
  ${EndIf}

  StrCpy $Seconds 60
  !insertmacro IfSwitch "un." "WAIT="
    StrCpy $Seconds $0
  ${EndIf}
FunctionEnd

; The files that setup puts there, by their kinds; what else stands in these folders is not ours.
!macro RemoveProgramFolders
  Delete "$INSTDIR\Support\Support.ini"
  Delete "$INSTDIR\Support\*.ico"
  Delete "$INSTDIR\Support\*.jpg"
  RMDir "$INSTDIR\Support"
  !insertmacro RemoveLanguage "en"
  !insertmacro RemoveLanguage "de"
  !insertmacro RemoveLanguage "ja"
  Delete "$INSTDIR\Help\*.css"
  RMDir "$INSTDIR\Help"
  RMDir "$INSTDIR\Languages"
!macroend

!macro RemoveLanguage Language
  Delete "$INSTDIR\Help\${Language}\*.html"
  Delete "$INSTDIR\Help\${Language}\*.png"
  RMDir "$INSTDIR\Help\${Language}"
  Delete "$INSTDIR\Languages\${Language}\TS_RES.dll"
  RMDir "$INSTDIR\Languages\${Language}"
!macroend

Section un.Uninstall
  Call un.AwaitEnd
  StrCpy $0 "/PerUser"
  ${If} $ForAll == 1
    StrCpy $0 ""
  ${EndIf}
  ExecWait '"$INSTDIR\TSBrowser.exe" /UnregServer $0'

  Delete "$INSTDIR\TSBrowser.exe"
  Delete "$INSTDIR\TS_RES.dll"
  Delete "$INSTDIR\UserSettings.exe"
  Delete "$INSTDIR\Report a Bug.htm" ; the browser's own, written over each time
  Delete "$SMPROGRAMS\${PRODUCT}.lnk"
  !insertmacro RemoveProgramFolders

  ; The setup that makes room in another folder takes over the library and the settings.
  !insertmacro IfSwitch "un." "PROGRAMONLY"
    Return
  ${EndIf}

  Call un.RemoveSamples
  Call un.TakeSettingsBack
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  DeleteRegKey SHCTX "${PRODUCT_KEY}"
  DeleteRegKey /ifempty SHCTX "Software\${PUBLISHER}"
  ${If} $ForAll == 1
    DeleteRegKey HKLM "${EACH_USER_KEY}"
    RMDir "$APPDATA\${PRODUCT}"
  ${EndIf}
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR"
  ${If} $Samples != ""
  ${AndIf} ${FileExists} "$Samples\*.*"
    DetailPrint "$(Kept) $Samples"
  ${EndIf}
SectionEnd
