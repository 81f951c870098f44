; The installer, for one user or for all. Defined from outside: VERSION, ARCHITECTURE (x64 or x86), STAGE (the folder with
; what is installed), ICON, OUTPUT, SIZE (in KiB). Uninstalling removes the files that are named here and nothing else:
; what the diary and the programs have written beside them stays.
Unicode true
!if ${ARCHITECTURE} == x64
  Target amd64-unicode
  !define MULTIUSER_USE_PROGRAMFILES64
!else
  Target x86-unicode
!endif
SetCompressor /SOLID lzma
; A file that cannot be replaced ends the installation: half of one would mix versions.
AllowSkipFiles off

!define NAME "Erste Schritte"
!define KEY "FirstSteps"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${KEY}"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "UninstallString"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INIT_TEXT_ALLUSERSNOTPOSSIBLE "$(AdministratorNeeded)"
!define MULTIUSER_INIT_FUNCTIONQUIT Refuse
!define MULTIUSER_INIT_un.FUNCTIONQUIT un.Refuse
!include MultiUser.nsh
!include MUI2.nsh

Name "${NAME}"
OutFile "${OUTPUT}"
ManifestDPIAware true
ManifestSupportedOS all
BrandingText "${NAME} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 ProductName "${NAME}"
VIAddVersionKey /LANG=0 ProductVersion "${VERSION}"
VIAddVersionKey /LANG=0 FileDescription "${NAME} Setup"
VIAddVersionKey /LANG=0 FileVersion "${VERSION}"
VIAddVersionKey /LANG=0 LegalCopyright ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\README.txt"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
; The first is the language where Windows speaks neither.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"

LangString AdministratorNeeded ${LANG_ENGLISH} "Installing for all users needs an administrator."
LangString AdministratorNeeded ${LANG_GERMAN} "Für alle Benutzer kann nur ein Administrator installieren."

!macro UseRegistryOfOurKind
  !if ${ARCHITECTURE} == x64
    SetRegView 64
  !endif
!macroend

!macro Refusal PREFIX
  Function ${PREFIX}Refuse
    SetErrorLevel 2
    Quit
  FunctionEnd
!macroend
!insertmacro Refusal ""
!insertmacro Refusal "un."

Function .onInit
  !insertmacro UseRegistryOfOurKind
  ; The folder of /D, which MultiUser would replace by its own.
  StrCpy $R0 $INSTDIR
  !insertmacro MULTIUSER_INIT
  StrCmp $R0 "" +2
    StrCpy $INSTDIR $R0
FunctionEnd

Function un.onInit
  !insertmacro UseRegistryOfOurKind
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

Section
  SetOutPath "$INSTDIR"
  File "${STAGE}/firststeps.exe"
  File "${STAGE}/firststeps_batch.exe"
  File "${STAGE}/patientdb.exe"
  File "${STAGE}/README.txt"
  SetOutPath "$INSTDIR\texts"
  File "${STAGE}/texts/de.ini"
  File "${STAGE}/texts/en.ini"
  SetOutPath "$INSTDIR\licences"
  File "${STAGE}/licences/gcc-runtime.txt"
  File "${STAGE}/licences/mingw-w64.txt"
  File "${STAGE}/licences/sqlite.txt"
  File "${STAGE}/licences/sqlite3-multiple-ciphers.txt"
  ; The shortcut's working folder.
  SetOutPath "$INSTDIR"
  CreateShortcut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\firststeps.exe"

  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\firststeps.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  Delete "$INSTDIR\firststeps.exe"
  Delete "$INSTDIR\firststeps_batch.exe"
  Delete "$INSTDIR\patientdb.exe"
  Delete "$INSTDIR\README.txt"
  Delete "$INSTDIR\texts\de.ini"
  Delete "$INSTDIR\texts\en.ini"
  RMDir "$INSTDIR\texts"
  Delete "$INSTDIR\licences\gcc-runtime.txt"
  Delete "$INSTDIR\licences\mingw-w64.txt"
  Delete "$INSTDIR\licences\sqlite.txt"
  Delete "$INSTDIR\licences\sqlite3-multiple-ciphers.txt"
  RMDir "$INSTDIR\licences"
  Delete "$INSTDIR\uninstall.exe"
  ; Only when empty: it may be the diary's own folder, with the patients' data.
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${NAME}.lnk"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd
