; Installs RWS Edit for one user, without an administrator.
;
;   makensis -DVERSION=2.0.0 -DSTAGE=FOLDER -DICON=FILE -DOUT=FILE installer.nsi
;
; STAGE holds the programs with their tables, help and licences. They go to bin and share, as on
; other systems, so that the program keeps what it writes with the user's own data and nothing but
; what is installed here lies in its folder.

Unicode true
Target amd64-unicode
RequestExecutionLevel user
SetCompressor /SOLID lzma
ManifestDPIAware true
Name "RWS Edit"
OutFile "${OUT}"
InstallDir "$LOCALAPPDATA\Programs\RWS Edit"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\RWS Edit"
!define SETTINGS_KEY "Software\Hollowbyte\RWS Edit"
!define CLASSES "Software\Classes"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"

!include MUI2.nsh
!include FileFunc.nsh
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\bin\rws-edit.exe"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "RWS Edit"
VIAddVersionKey "FileDescription" "RWS Edit Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "Copyright 2026 The RWS Edit maintainers"

; A program that runs cannot be replaced; a try to open it for writing tells.
!macro RefuseWhileItRuns
  retry:
  ${If} ${FileExists} "$INSTDIR\bin\rws-edit.exe"
    ClearErrors
    FileOpen $0 "$INSTDIR\bin\rws-edit.exe" a
    ${If} ${Errors}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "RWS Edit is running. Please close it and try again." /SD IDCANCEL IDRETRY retry
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

; The keys that the program's own preferences write.
!macro AssociateEnding ENDING TITLE
  WriteRegStr HKCU "${CLASSES}\RWS Edit${ENDING}" "" "${TITLE}"
  WriteRegStr HKCU "${CLASSES}\RWS Edit${ENDING}\shell\open\command" "" "$INSTDIR\bin\rws-edit.exe %1"
  WriteRegStr HKCU "${CLASSES}\${ENDING}" "" "RWS Edit${ENDING}"
!macroend

; An ending that leads to another program by now is left to it, and so is a class of another copy.
!macro ForgetEnding ENDING
  ReadRegStr $0 HKCU "${CLASSES}\RWS Edit${ENDING}\shell\open\command" ""
  ${If} $0 == "$INSTDIR\bin\rws-edit.exe %1"
    DeleteRegKey HKCU "${CLASSES}\RWS Edit${ENDING}"
    ReadRegStr $0 HKCU "${CLASSES}\${ENDING}" ""
    ${If} $0 == "RWS Edit${ENDING}"
      DeleteRegKey HKCU "${CLASSES}\${ENDING}"
    ${EndIf}
  ${EndIf}
!macroend

!macro TellExplorer
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Section "RWS Edit" Program
  SectionIn RO
  !insertmacro RefuseWhileItRuns
  SetOutPath "$INSTDIR\bin"
  File "${STAGE}/rws-edit.exe"
  File "${STAGE}/rws-cli.exe"
  SetOutPath "$INSTDIR\share\rws-edit"
  File "${STAGE}/RWS_*.txt"
  File "${STAGE}/RWS.HLP.html"
  SetOutPath "$INSTDIR\licences"
  File "${STAGE}/licences/*.*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "RWS Edit"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The RWS Edit maintainers"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\bin\rws-edit.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section "Shortcut in the Start menu" Shortcut
  SetOutPath "$INSTDIR\bin"
  CreateShortcut "$SMPROGRAMS\RWS Edit.lnk" "$INSTDIR\bin\rws-edit.exe"
SectionEnd

Section /o "Open missions and briefings with RWS Edit" Association
  !insertmacro AssociateEnding ".mis" "RWS Edit"
  !insertmacro AssociateEnding ".properties" "RWS Briefing"
  !insertmacro TellExplorer
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${Program} "The window, rws-cli for scripts, their tables and help."
  !insertmacro MUI_DESCRIPTION_TEXT ${Shortcut} "An entry by which the program is started."
  !insertmacro MUI_DESCRIPTION_TEXT ${Association} "A double click on a .mis or .properties file opens it. The program's preferences switch this on and off, too."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; "/ASSOCIATE" chooses the association without a window.
Function .onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/ASSOCIATE" $1
  ${IfNot} ${Errors}
    SectionSetFlags ${Association} ${SF_SELECTED}
  ${EndIf}
FunctionEnd

Section "un.RWS Edit"
  !insertmacro RefuseWhileItRuns
  !insertmacro ForgetEnding ".mis"
  !insertmacro ForgetEnding ".properties"
  !insertmacro TellExplorer
  Delete "$SMPROGRAMS\RWS Edit.lnk"
  ; By name: a folder chosen by hand may hold what is not ours.
  Delete "$INSTDIR\bin\rws-edit.exe"
  Delete "$INSTDIR\bin\rws-cli.exe"
  RMDir "$INSTDIR\bin"
  Delete "$INSTDIR\share\rws-edit\RWS_*.txt"
  Delete "$INSTDIR\share\rws-edit\RWS.HLP.html"
  RMDir "$INSTDIR\share\rws-edit"
  RMDir "$INSTDIR\share"
  Delete "$INSTDIR\licences\*.txt"
  Delete "$INSTDIR\licences\*.sh"
  RMDir "$INSTDIR\licences"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  DeleteRegKey HKCU "${SETTINGS_KEY}"
  DeleteRegKey /ifempty HKCU "Software\Hollowbyte"

  ; The log goes; backups and what the user wrote only when he says so.
  StrCpy $0 "$LOCALAPPDATA\rws-edit"
  Delete "$0\Error.txt"
  ; Folders go only where they are empty.
  FindFirst $1 $2 "$0\*"
  ${DoUntil} $2 == ""
    ${If} $2 != "."
    ${AndIf} $2 != ".."
      RMDir "$0\$2"
    ${EndIf}
    FindNext $1 $2
  ${Loop}
  FindClose $1
  RMDir "$0"
  ${If} ${FileExists} "$0\*.*"
    MessageBox MB_YESNO|MB_DEFBUTTON2|MB_ICONQUESTION "Delete the backups of your missions, too, and all else in$\r$\n$0?" /SD IDNO IDNO keep
    RMDir /r "$0"
    keep:
  ${EndIf}
SectionEnd
