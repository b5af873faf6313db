; What a user's registry needs before the browser can start, and how it is written and taken back.
;
; A value is written where there is none, or where it still holds what was written last: what the user (or whoever looks
; after his machine) changed stays as it is. What was written last is noted in "Settings" of the product's own key.
; Taking back follows the same rule.
;
; Expects: $INSTDIR, $Library, $PictureFolder, $UpdateService, $TextLanguage.

!define PRODUCT "Tessaly Desk"
!define PUBLISHER "Zelmor Software"
!define PRODUCT_KEY "Software\${PUBLISHER}\${PRODUCT}"
!define WRITTEN_KEY "${PRODUCT_KEY}\Settings"
!define SETTINGS_ROOT "Software\VB and VBA Program Settings"
!define SETTINGS_KEY "${SETTINGS_ROOT}\Tessaly GWX 1.0"

Var Library
Var PictureFolder ; of the profiles; empty: the browser's own choice, among the user's documents
Var ExportFolder  ; the user's documents: an export must not be offered into the program's folder
Var UpdateService ; its address; empty: none is asked
Var TextLanguage  ; en, de or ja
Var SystemVersion
Var ExplorerVersion

; The table: section, name, value. A value that is empty is not written.
!macro EachSetting Do
  !insertmacro ${Do} "Options" "MSOVersion" "XP"
  !insertmacro ${Do} "Options" "Installed Path" "$INSTDIR"
  !insertmacro ${Do} "Options" "OS Version" "$SystemVersion"
  !insertmacro ${Do} "Options" "IEVersion" "$ExplorerVersion"
  !insertmacro ${Do} "Options" "Profile Images Path" "$PictureFolder"
  !insertmacro ${Do} "Options" "ExportProfilePath" "$ExportFolder"
  !insertmacro ${Do} "Options" "WebHostPath" "$UpdateService"
  !insertmacro ${Do} "Edition" "Edition" "${PRODUCT}"
  !insertmacro ${Do} "Edition" "Build" "${BUILD}"
  !insertmacro ${Do} "Edition" "ProductID" "TSDESK"
  !insertmacro ${Do} "Help" "General HTML" "Help\$TextLanguage\index.html"
  !insertmacro ${Do} "Help" "Using Find HTML" "Help\$TextLanguage\find.html"
  !insertmacro ${Do} "Help" "About HTML" "Help\$TextLanguage\about.html"
  !insertmacro ${Do} "Help" "Recent Documents HTML" "Help\$TextLanguage\recent-documents.html"
  !insertmacro ${Do} "Help" "ImportExportHTML" "Help\$TextLanguage\import-export.html"
  !insertmacro ${Do} "Help" "Template Pack HTML" "Help\$TextLanguage\solution-packs.html"
  !insertmacro ${Do} "Help" "Profile HTML" "Help\$TextLanguage\profiles.html"
  !insertmacro ${Do} "Help" "ProfileImageHelp" "Help\$TextLanguage\profile-pictures.html"
  !insertmacro ${Do} "Browser" "Access HDD_Templates" "True"
  !insertmacro ${Do} "Browser" "HDD Templates Path" "$Library"
  !insertmacro ${Do} "Browser" "MainWidth" "15000"
  !insertmacro ${Do} "Browser" "MainHeight" "10800"
  !insertmacro ${Do} "Browser" "VertSplitterLeft" "3600"
  !insertmacro ${Do} "Browser" "HorzSplitterTop" "6300"
!macroend

!macro Push3AndCall Function Section Name Value
  Push "${Value}"
  Push "${Name}"
  Push "${Section}"
  Call ${Function}
!macroend

!macro WriteSetting Section Name Value
  !insertmacro Push3AndCall WriteOneSetting "${Section}" "${Name}" "${Value}"
!macroend

!macro un.TakeSettingBack Section Name Value
  !insertmacro Push3AndCall un.TakeOneSettingBack "${Section}" "${Name}" ""
!macroend
!macro TakeSettingBack Section Name Value
  !insertmacro Push3AndCall TakeOneSettingBack "${Section}" "${Name}" ""
!macroend

; Writes the table for the user who runs this.
Function WriteSettings
  ReadRegStr $ExportFolder HKCU "Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders" "Personal"
  ${WinVerGetMajor} $0
  ${WinVerGetMinor} $1
  ${WinVerGetBuild} $2
  StrCpy $SystemVersion "$0.$1.$2"
  ReadRegStr $ExplorerVersion HKLM "Software\Microsoft\Internet Explorer" "svcVersion"
  ${If} $ExplorerVersion == ""
    ReadRegStr $ExplorerVersion HKLM "Software\Microsoft\Internet Explorer" "Version"
  ${EndIf}
  ; The folder of this copy, whichever was there before.
  DeleteRegValue HKCU "${SETTINGS_KEY}\Options" "Installed Path"
  !insertmacro EachSetting WriteSetting
FunctionEnd

Function WriteOneSetting
  Pop $0
  Pop $1
  Pop $2
  ExpandEnvStrings $2 $2 ; one line serves every user: \\server\pictures\%USERNAME%
  ReadRegStr $3 HKCU "${SETTINGS_KEY}\$0" "$1"
  ReadRegStr $4 HKCU "${WRITTEN_KEY}" "$0\$1"
  ${If} $3 S!= $4
  ${AndIf} $3 != ""
    Return
  ${EndIf}
  ${If} $2 == ""
    DeleteRegValue HKCU "${SETTINGS_KEY}\$0" "$1"
    DeleteRegValue HKCU "${WRITTEN_KEY}" "$0\$1"
  ${Else}
    WriteRegStr HKCU "${SETTINGS_KEY}\$0" "$1" "$2"
    WriteRegStr HKCU "${WRITTEN_KEY}" "$0\$1" "$2"
  ${EndIf}
FunctionEnd

!macro TakeBackFunctions un
Function ${un}TakeSettingsBack
  ; Another copy that was set up later keeps what it wrote.
  ReadRegStr $0 HKCU "${WRITTEN_KEY}" "Options\Installed Path"
  ${If} $0 != $INSTDIR
    Return
  ${EndIf}
  !insertmacro EachSetting ${un}TakeSettingBack
  DeleteRegKey HKCU "${WRITTEN_KEY}"
  DeleteRegKey /ifempty HKCU "${SETTINGS_KEY}\Options"
  DeleteRegKey /ifempty HKCU "${SETTINGS_KEY}\Edition"
  DeleteRegKey /ifempty HKCU "${SETTINGS_KEY}\Help"
  DeleteRegKey /ifempty HKCU "${SETTINGS_KEY}\Browser"
  DeleteRegKey /ifempty HKCU "${SETTINGS_KEY}"
  DeleteRegKey /ifempty HKCU "${SETTINGS_ROOT}"
  DeleteRegKey /ifempty HKCU "${PRODUCT_KEY}"
  DeleteRegKey /ifempty HKCU "Software\${PUBLISHER}"
FunctionEnd

Function ${un}TakeOneSettingBack
  Pop $0
  Pop $1
  Pop $2
  ReadRegStr $3 HKCU "${SETTINGS_KEY}\$0" "$1"
  ReadRegStr $4 HKCU "${WRITTEN_KEY}" "$0\$1"
  ${If} $3 S== $4
    DeleteRegValue HKCU "${SETTINGS_KEY}\$0" "$1"
  ${EndIf}
FunctionEnd
!macroend
