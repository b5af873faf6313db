; UserSettings.exe, beside the program: makes the copy in its own folder ready for the user who starts it.
;   UserSettings.exe [/S]           a copy unpacked from the zip: settings, and registration for this user's hosts;
;                                   after a setup for all users: the settings alone (the system runs it at each logon
;                                   that follows a setup)
;   UserSettings.exe /REMOVE [/S]   takes both back
; Exit codes: 0; 14 the program could not be registered.
!ifdef TARGET
  Target ${TARGET}
!endif
Unicode true
ManifestDPIAware true
RequestExecutionLevel user
SetCompressor lzma

!include FileFunc.nsh
!include LogicLib.nsh
!include WinVer.nsh
!include Settings.nsh
!insertmacro TakeBackFunctions ""

Name "${PRODUCT}"
OutFile "${OUT}"
Icon "${ROOT}/art/icons/app.ico"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "LegalCopyright" "${PUBLISHER}"
VIAddVersionKey "FileDescription" "${PRODUCT}: settings of a user"
VIAddVersionKey "FileVersion" "${VERSION}.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "ProductVersion" "${VERSION}.0"
SilentInstall silent

Function .onInit
  SetErrorLevel 0
  StrCpy $INSTDIR $EXEDIR
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/S" $R1
  StrCpy $R2 ""
  ${If} ${Errors}
    StrCpy $R2 "speak"
  ${EndIf}

  ReadRegStr $0 HKLM "${PRODUCT_KEY}" "Installed Path"
  StrCpy $R3 ""
  StrCpy $TextLanguage "en"
  ${If} $0 == $INSTDIR
    StrCpy $R3 "machine"
    ReadRegStr $Library HKLM "${PRODUCT_KEY}" "Templates Path"
    ReadRegStr $PictureFolder HKLM "${PRODUCT_KEY}" "Profile Pictures Path"
    ReadRegStr $UpdateService HKLM "${PRODUCT_KEY}" "Update Service"
    ReadRegStr $TextLanguage HKLM "${PRODUCT_KEY}" "Language"
  ${Else}
    StrCpy $Library "$INSTDIR\Templates"
  ${EndIf}

  ClearErrors
  ${GetOptions} $R0 "/REMOVE" $R1
  ${If} ${Errors}
    Call WriteSettings
    StrCpy $R4 "/RegServer"
    StrCpy $R5 "${PRODUCT} in this folder is ready: start TSBrowser.exe."
  ${Else}
    Call TakeSettingsBack
    StrCpy $R4 "/UnregServer"
    StrCpy $R5 "The settings of ${PRODUCT} were taken back. The folder can be deleted."
  ${EndIf}
  ${If} $R3 == ""
    ExecWait '"$INSTDIR\TSBrowser.exe" $R4 /PerUser' $0
    ${If} $0 != 0
      SetErrorLevel 14
      StrCpy $R5 "The program could not be registered (error $0)."
    ${EndIf}
  ${EndIf}
  ${If} $R2 == "speak"
    MessageBox MB_OK $R5
  ${EndIf}
  Quit
FunctionEnd

Section
SectionEnd
