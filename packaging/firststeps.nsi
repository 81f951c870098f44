; The installer, for one user or for all. Defined from outside: VERSION, ARCHITECTURE (x64 or x86), STAGE (the folder with
; what is installed), ICON, OUTPUT, SIZE (in KiB), LINK (where users find help; empty: the README), SIGN (a command that signs
; the file that it is given; may be missing). Uninstalling removes the files that are named here and nothing else: what the
; diary and the programs have written beside them stays. The folder may be the diary's own, so that each name that a diary
; could use for itself carries ours, and texts of another origin are not replaced.
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

; Both kinds can stand side by side: nothing of them has the same name.
!if ${ARCHITECTURE} == x64
  !define NAME "Erste Schritte (x64)"
  !define OTHER x86
!else
  !define NAME "Erste Schritte"
  !define OTHER x64
!endif
!define KEY "FirstSteps-${ARCHITECTURE}"
!define PUBLISHER "Lumoraquant"
!define UNINSTALLER "firststeps-uninstall-${ARCHITECTURE}.exe"
!define README "firststeps-README.txt"
!define LICENCES "firststeps-licences"
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
!include LogicLib.nsh
!include WinVer.nsh
!ifdef SIGN
  !uninstfinalize '${SIGN} "%1"' = 0
  !finalize '${SIGN} "%1"' = 0
!endif

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
VIAddVersionKey /LANG=0 CompanyName "${PUBLISHER}"
VIAddVersionKey /LANG=0 LegalCopyright ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\${README}"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckFolder
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
LangString OldWindows ${LANG_ENGLISH} "These programs need Windows 10, version 1607, or newer."
LangString OldWindows ${LANG_GERMAN} "Diese Programme brauchen Windows 10, Version 1607, oder neuer."
LangString OtherKind ${LANG_ENGLISH} "The programs for ${OTHER} are in this folder. Please choose another one."
LangString OtherKind ${LANG_GERMAN} "In diesem Ordner liegen die Programme für ${OTHER}. Bitte wählen Sie einen anderen."
LangString ForeignTexts ${LANG_ENGLISH} "The texts in this folder ($INSTDIR\texts) are not those of this setup and are kept. Please choose another folder."
LangString ForeignTexts ${LANG_GERMAN} "Die Texte in diesem Ordner ($INSTDIR\texts) stammen nicht von diesem Setup und bleiben erhalten. Bitte wählen Sie einen anderen Ordner."
LangString InUse ${LANG_ENGLISH} "$R1 is running or cannot be replaced. Close it and try again. Nothing has been changed."
LangString InUse ${LANG_GERMAN} "$R1 läuft noch oder lässt sich nicht ersetzen. Schließen Sie das Programm und versuchen Sie es noch einmal. Bisher ist nichts geändert."
LangString NotRemoved ${LANG_ENGLISH} "$R1 could not be removed. Close the programs and uninstall once more."
LangString NotRemoved ${LANG_GERMAN} "$R1 konnte nicht entfernt werden. Schließen Sie die Programme und deinstallieren Sie noch einmal."

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

; Exit codes, told in docs/rollout.md.
!define NOT_ALLOWED 2
!define IN_USE 3
!define WRONG_FOLDER 4

!macro EndWith CODE
  SetErrorLevel ${CODE}
  Quit
!macroend

; Ends where one of the programs runs: half of them replaced, or gone, would be worse than none.
!macro ExpectClosed PROGRAM
  StrCpy $R1 "$INSTDIR\${PROGRAM}"
  ${DoWhile} ${FileExists} $R1
    ClearErrors
    FileOpen $R2 $R1 a
    ${IfNot} ${Errors}
      FileClose $R2
      ${ExitDo}
    ${EndIf}
    ${If} ${Cmd} 'MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(InUse)" /SD IDCANCEL IDCANCEL'
      !insertmacro EndWith ${IN_USE}
    ${EndIf}
  ${Loop}
!macroend

!macro ExpectAllClosed
  !insertmacro ExpectClosed firststeps.exe
  !insertmacro ExpectClosed firststeps_batch.exe
  !insertmacro ExpectClosed patientdb.exe
!macroend

; $R0 becomes empty where the folder can be taken, else says why not.
Function LookAtFolder
  StrCpy $R0 ""
  ${If} ${FileExists} "$INSTDIR\firststeps-uninstall-${OTHER}.exe"
    StrCpy $R0 "$(OtherKind)"
  ${ElseIfNot} ${FileExists} "$INSTDIR\${UNINSTALLER}"
    ${If} ${FileExists} "$INSTDIR\texts\de.ini"
    ${OrIf} ${FileExists} "$INSTDIR\texts\en.ini"
      StrCpy $R0 "$(ForeignTexts)"
    ${EndIf}
  ${EndIf}
FunctionEnd

Function CheckFolder
  Call LookAtFolder
  ${If} $R0 != ""
    MessageBox MB_OK|MB_ICONEXCLAMATION $R0 /SD IDOK
    Abort
  ${EndIf}
FunctionEnd

Function .onInit
  ${IfNot} ${AtLeastWin10}
  ${OrIfNot} ${AtLeastBuild} 14393
    MessageBox MB_OK|MB_ICONSTOP "$(OldWindows)" /SD IDOK
    !insertmacro EndWith ${NOT_ALLOWED}
  ${EndIf}
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
  ; The page of the folder is not shown to everybody.
  Call LookAtFolder
  ${If} $R0 != ""
    MessageBox MB_OK|MB_ICONSTOP $R0 /SD IDOK
    !insertmacro EndWith ${WRONG_FOLDER}
  ${EndIf}
  !insertmacro ExpectAllClosed
  SetOutPath "$INSTDIR"
  ; First: whatever ends the installation halfway, what is there can be removed, and is known to be ours the next time.
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  File "${STAGE}/firststeps.exe"
  File "${STAGE}/firststeps_batch.exe"
  File "${STAGE}/patientdb.exe"
  File "${STAGE}/${README}"
  SetOutPath "$INSTDIR\texts"
  File "${STAGE}/texts/de.ini"
  File "${STAGE}/texts/en.ini"
  SetOutPath "$INSTDIR\${LICENCES}"
  File "${STAGE}/${LICENCES}/gcc-runtime.txt"
  File "${STAGE}/${LICENCES}/mingw-w64.txt"
  File "${STAGE}/${LICENCES}/sqlite.txt"
  File "${STAGE}/${LICENCES}/sqlite3-multiple-ciphers.txt"
  ; The shortcut's working folder.
  SetOutPath "$INSTDIR"
  CreateShortcut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\firststeps.exe"

  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\firststeps.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Readme" "$INSTDIR\${README}"
  !if "${LINK}" != ""
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "HelpLink" "${LINK}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "URLInfoAbout" "${LINK}"
  !endif
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; What cannot be removed keeps the uninstaller and its entry, so that it can be tried again.
!macro Remove FILE
  Delete "$INSTDIR\${FILE}"
  ${If} ${FileExists} "$INSTDIR\${FILE}"
    StrCpy $R1 "$INSTDIR\${FILE}"
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(NotRemoved)" /SD IDOK
    !insertmacro EndWith ${IN_USE}
  ${EndIf}
!macroend

Section "Uninstall"
  !insertmacro ExpectAllClosed
  !insertmacro Remove firststeps.exe
  !insertmacro Remove firststeps_batch.exe
  !insertmacro Remove patientdb.exe
  !insertmacro Remove ${README}
  !insertmacro Remove texts\de.ini
  !insertmacro Remove texts\en.ini
  RMDir "$INSTDIR\texts"
  !insertmacro Remove ${LICENCES}\gcc-runtime.txt
  !insertmacro Remove ${LICENCES}\mingw-w64.txt
  !insertmacro Remove ${LICENCES}\sqlite.txt
  !insertmacro Remove ${LICENCES}\sqlite3-multiple-ciphers.txt
  RMDir "$INSTDIR\${LICENCES}"
  Delete "$SMPROGRAMS\${NAME}.lnk"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  ; Where it runs from its own place (_?=), it stays.
  Delete "$INSTDIR\${UNINSTALLER}"
  ; Only when empty: it may be the diary's own folder, with the patients' data.
  RMDir "$INSTDIR"
SectionEnd
