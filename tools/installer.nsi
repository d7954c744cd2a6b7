; The installer, per user and without administrator's rights. Switches: /S silent, /D=FOLDER as the last one.
; Switches of the uninstaller: /S silent, /ERASE deletes pictures and settings too. Exit code 2: nothing was done,
; because the program is running. Built by tools/make-setup.
Target amd64-unicode
Unicode true
!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zubbly"
!define MENU "$SMPROGRAMS\Zubbly"
!define DATA "$APPDATA\norvanta\Zubworks\Zubbly"
SetCompressor /SOLID lzma
RequestExecutionLevel user
Name "Zubbly"
OutFile "${OUTFILE}"
InstallDir "$LOCALAPPDATA\Programs\Zubbly"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
ManifestDPIAware true
SpaceTexts none
BrandingText "Zubbly ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Zubbly"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Zubbly setup"
VIAddVersionKey "LegalCopyright" "The Zubbly authors"
!ifdef SIGN
  !finalize '${SIGN} "%1"'
  !uninstfinalize '${SIGN} "%1"'
!endif

!include MUI2.nsh
!include FileFunc.nsh
!define MUI_ICON "resources/zubbly.ico"
!define MUI_UNICON "resources/zubbly.ico"
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\Zubbly.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!macro LANGUAGE name pictures settings parents running erase
  !insertmacro MUI_LANGUAGE ${name}
  LangString PICTURES ${LANG_${name}} "${pictures}"
  LangString SETTINGS ${LANG_${name}} "${settings}"
  LangString PARENTS ${LANG_${name}} "${parents}"
  LangString RUNNING ${LANG_${name}} "${running}"
  LangString ERASE ${LANG_${name}} "${erase}"
!macroend
!insertmacro LANGUAGE English "Saved pictures" "Settings" "For parents" \
  "Zubbly is running. Please leave it with Alt+F4 first." \
  "Delete saved pictures and settings, too"
!insertmacro LANGUAGE Japanese "保存した絵" "設定" "おうちの方へ" \
  "Zubbly が動いています。先に Alt+F4 で終了してください。" "保存した絵と設定も削除する"
!insertmacro LANGUAGE SimpChinese "保存的图画" "设置" "给家长" \
  "Zubbly 正在运行。请先按 Alt+F4 退出。" "同时删除保存的图画和设置"
!insertmacro LANGUAGE French "Dessins enregistrés" "Réglages" "Pour les parents" \
  "Zubbly est en cours d'exécution. Quittez-le d'abord avec Alt+F4." \
  "Supprimer aussi les dessins enregistrés et les réglages"
!insertmacro LANGUAGE Italian "Disegni salvati" "Impostazioni" "Per i genitori" \
  "Zubbly è in esecuzione. Prima chiudilo con Alt+F4." \
  "Elimina anche i disegni salvati e le impostazioni"
!insertmacro LANGUAGE German "Gespeicherte Bilder" "Einstellungen" "Für Eltern" \
  "Zubbly läuft gerade. Bitte zuerst mit Alt+F4 beenden." \
  "Auch gespeicherte Bilder und Einstellungen löschen"
!insertmacro LANGUAGE Spanish "Dibujos guardados" "Configuración" "Para madres y padres" \
  "Zubbly se está ejecutando. Ciérrelo primero con Alt+F4." \
  "Eliminar también los dibujos guardados y la configuración"

; The program is running if its single-instance mutex exists. A silent run shows no message, only exit code 2.
!macro NOT_WHILE_IT_RUNS
  System::Call 'kernel32::OpenMutexW(i 0x100000, i 0, w "Local\Zubbly_SingleInstance_v1") p .r0'
  ${If} $0 P<> 0
    System::Call 'kernel32::CloseHandle(p r0)'
    MessageBox MB_OK|MB_ICONINFORMATION "$(RUNNING)" /SD IDOK
    Quit
  ${EndIf}
!macroend

Function .onInit
  !insertmacro NOT_WHILE_IT_RUNS
FunctionEnd

Section "Zubbly" PROGRAM_SECTION
  ; Otherwise files of an older version that this one no longer has would stay.
  ReadRegStr $0 HKCU "${KEY}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    ExecWait '"$0\uninstall.exe" /S _?=$0'
    Delete "$0\uninstall.exe"  ; it cannot remove itself when run from its own place
    RMDir "$0"
  ${EndIf}
  SetOutPath $INSTDIR
  File /r "${STAGE}\*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateDirectory "${DATA}\SavedPictures"
  CreateDirectory "${MENU}"
  CreateShortcut "${MENU}\Zubbly.lnk" "$INSTDIR\Zubbly.exe"
  CreateShortcut "${MENU}\$(PARENTS).lnk" "$INSTDIR\guide\index.html"
  CreateShortcut "${MENU}\$(PICTURES).lnk" "${DATA}\SavedPictures"
  ; The program writes config.ini at its first start. A shortcut cannot choose, so it runs a minimised shell.
  SetOutPath "${DATA}"  ; where a link starts what it opens
  CreateShortcut "${MENU}\$(SETTINGS).lnk" "$SYSDIR\cmd.exe" \
    "/c if exist config.ini (start config.ini) else start ." "$INSTDIR\Zubbly.exe" 0 SW_SHOWMINIMIZED
  SetOutPath $INSTDIR
  WriteRegStr HKCU "${KEY}" "Language" "$LANGUAGE"
  WriteRegStr HKCU "${KEY}" "DisplayName" "Zubbly"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\Zubbly.exe"
  WriteRegStr HKCU "${KEY}" "Publisher" "The Zubbly authors"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  SectionGetSize ${PROGRAM_SECTION} $0
  WriteRegDWORD HKCU "${KEY}" "EstimatedSize" $0
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
SectionEnd

; Deletes only what was installed: a family may have put its own pictures beside the program.
Section "un.Zubbly"
  SectionIn RO
  !include "${REMOVAL}"
  Delete "$INSTDIR\uninstall.exe"
  Delete "${MENU}\Zubbly.lnk"
  Delete "${MENU}\$(PARENTS).lnk"
  Delete "${MENU}\$(PICTURES).lnk"
  Delete "${MENU}\$(SETTINGS).lnk"
  RMDir "${MENU}"
  RMDir "$INSTDIR"
  DeleteRegKey HKCU "${KEY}"
SectionEnd

; Here too, only the program's own files.
Section /o "un.$(ERASE)" ERASE_SECTION
  Delete "${DATA}\SavedPictures\auto-*.png"
  Delete "${DATA}\config.ini"
  Delete "${DATA}\display_name.txt"
  Delete "${DATA}\exit_hint_launches.txt"
SectionEnd

; The installer created this folder; it stays if it is not empty.
Section "-un.EmptyFolders"
  RMDir "${DATA}\SavedPictures"
  RMDir "${DATA}"
  RMDir "$APPDATA\norvanta\Zubworks"
  RMDir "$APPDATA\norvanta"
SectionEnd

Function un.onInit
  ; The Start menu entries are named in the language of the installation.
  ReadRegStr $0 HKCU "${KEY}" "Language"
  ${If} $0 != ""
    StrCpy $LANGUAGE $0
  ${EndIf}
  !insertmacro NOT_WHILE_IT_RUNS
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/ERASE" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${ERASE_SECTION}
  ${EndIf}
FunctionEnd
