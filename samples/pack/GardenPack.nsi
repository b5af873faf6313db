; The installer of the sample solution pack, and a pattern for others (docs/PACKS.md explains it):
;   makensis -DSOURCE=FOLDER -DOUTFILE=FILE samples/pack/GardenPack.nsi
; SOURCE holds the templates as they lie in the library. The pack takes /S (silent) and /UNINSTALL.
!ifdef TARGET
  Target ${TARGET}
!endif
Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel user ; everything it writes is the user's own
!include FileFunc.nsh
!include LogicLib.nsh

!define PACK "Garden Centre"
!define VERSION "1.0"
!define DESCRIPTION "Order forms, flyers and price lists for a garden centre"
!define SETTINGS "Software\VB and VBA Program Settings\Tessaly GWX 1.0"
!define KEY "${SETTINGS}\Content\${PACK}"

Name "${PACK} Solution Pack"
OutFile "${OUTFILE}"
ShowInstDetails show
InstallColors /windows
Page instfiles

VIProductVersion 1.0.0.0
VIAddVersionKey ProductName "${PACK} Solution Pack"
VIAddVersionKey ProductVersion "Tessaly ${VERSION}" ; the browser takes no file whose version lacks the word
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "${DESCRIPTION}"
VIAddVersionKey CompanyName "Tessaly"
VIAddVersionKey LegalCopyright "Tessaly"

Var Library ; the user's templates path

; Every folder with its files. ACTION_Folder and ACTION_File say what is done with them.
!macro Contents ACTION
  !insertmacro ${ACTION}_Folder "Garden Centre"
  !insertmacro ${ACTION}_File "Garden Centre" "Order form.swt" "Order form.jpg"
  !insertmacro ${ACTION}_File "Garden Centre" "Advice after planting.swt" "Advice after planting.jpg"
  !insertmacro ${ACTION}_File "Garden Centre" "Week's sowing plan.ccw" "Week's sowing plan.jpg"
  !insertmacro ${ACTION}_File "Garden Centre" "folder_flower.ico" ""
  !insertmacro ${ACTION}_Folder "Garden Centre\Flyers"
  !insertmacro ${ACTION}_File "Garden Centre\Flyers" "Spring flyer.swt" "Spring flyer.jpg"
  !insertmacro ${ACTION}_File "Garden Centre\Flyers" "Autumn flyer.swt" "Autumn flyer.jpg"
  !insertmacro ${ACTION}_Folder "Garden Centre\Price Lists"
  !insertmacro ${ACTION}_File "Garden Centre\Price Lists" "Herbs.ccw" "Herbs.jpg"
  !insertmacro ${ACTION}_File "Garden Centre\Price Lists" "Fruit trees.ccw" "Fruit trees.jpg"
!macroend

; What the browser has to know to take the pack away again.
!define RECORD ""
!macro Record_Folder FOLDER
  !if "${RECORD}" == ""
    !define /redef RECORD "${FOLDER}"
  !else
    !define /redef RECORD "${RECORD}$\r$\n${FOLDER}"
  !endif
!macroend
!macro Record_File FOLDER FILE PREVIEW
  !define /redef RECORD "${RECORD}|${FILE}"
!macroend
!insertmacro Contents Record

!macro Install_Folder FOLDER
!macroend
!macro Install_File FOLDER FILE PREVIEW
  SetOutPath "$Library\${FOLDER}"
  File "${SOURCE}/${FOLDER}/${FILE}"
  !if "${PREVIEW}" != ""
    SetOutPath "$Library\${FOLDER}\Previews"
    File "${SOURCE}/${FOLDER}/Previews/${PREVIEW}"
  !endif
!macroend

Section
  ; A template that the user has changed since stays his.
  SetOverwrite ifnewer
  ClearErrors
  !insertmacro Contents Install
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "The templates could not be copied to $Library." /SD IDOK
    SetErrorLevel 3
    Abort
  ${EndIf}
  SetOutPath "$TEMP" ; an installer that stands in a folder keeps it from being removed
  WriteRegStr HKCU "${KEY}" "Version" "Tessaly ${VERSION}"
  WriteRegStr HKCU "${KEY}" "Description" "${DESCRIPTION}"
  WriteRegStr HKCU "${KEY}" "PackInstalledBySetUp" "0"
  WriteRegStr HKCU "${KEY}" "TemplateFolders" "${RECORD}"
SectionEnd

!macro Remove_Folder FOLDER
!macroend
!macro Remove_File FOLDER FILE PREVIEW
  Delete "$Library\${FOLDER}\${FILE}"
  !if "${PREVIEW}" != ""
    Delete "$Library\${FOLDER}\Previews\${PREVIEW}"
  !endif
!macroend
!macro Empty_Folder FOLDER
  RMDir "$Library\${FOLDER}\Previews" ; goes only when nothing is in it
  RMDir "$Library\${FOLDER}"
!macroend
!macro Empty_File FOLDER FILE PREVIEW
!macroend

Function Remove
  !insertmacro Contents Remove
  !insertmacro Contents Empty
  RMDir "$Library\${PACK}" ; the folders below it had to go first
  DeleteRegKey HKCU "${KEY}"
FunctionEnd

Function .onInit
  ReadRegStr $Library HKCU "${SETTINGS}\Browser" "HDD Templates Path"
  ${If} $Library == ""
  ${OrIfNot} ${FileExists} "$Library\*.*"
    MessageBox MB_OK|MB_ICONSTOP "The template browser is not installed, or its templates cannot be reached." /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UNINSTALL" $1
  ${IfNot} ${Errors}
    Call Remove
    SetErrorLevel 0 ; leaving this early counts as a failure otherwise
    Quit
  ${EndIf}
FunctionEnd
