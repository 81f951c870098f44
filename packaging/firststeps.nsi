; The installer, for one user or for all. Defined from outside: VERSION, TARGET (of the setup itself: x86-unicode runs on every
; Windows), STAGE (the folder with what is installed; its folders x86 and x64 hold the two kinds of the programs), ICON, OUTPUT,
; SIZE (of the larger kind with the rest, in KiB), LINK (where users find help; empty: the README), SIGN (a command that signs
; the file that it is given; may be missing). Uninstalling removes the files that are named here and nothing else: what the
; diary and the programs have written beside them stays. The folder may be the diary's own, so that each name that a diary
; could use for itself carries ours, and texts of another origin are not replaced.
; Silently: /x86 or /x64 (else the kind that is installed, else x86), /Path or /NoPath (else as it is, else not).
Unicode true
Target ${TARGET}
SetCompressor /SOLID lzma
; A file that cannot be replaced ends the installation: half of one would mix versions.
AllowSkipFiles off

!define NAME "Erste Schritte"
!define PUBLISHER "Lumoraquant"
!define UNINSTALLER "firststeps-uninstall.exe"
!define README "firststeps-README.txt"
!define LICENCES "firststeps-licences"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\FirstSteps"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "UninstallString"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_FUNCTION ChooseAsBefore
!define MULTIUSER_INIT_TEXT_ALLUSERSNOTPOSSIBLE "$(AdministratorNeeded)"
!define MULTIUSER_INIT_FUNCTIONQUIT Refuse
!define MULTIUSER_INIT_un.FUNCTIONQUIT un.Refuse
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include WinVer.nsh
!include WinMessages.nsh
!include FileFunc.nsh
!include Sections.nsh
!include x64.nsh
!include "${__FILEDIR__}/path.nsh"
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
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE UseFolderOfKind
!insertmacro MUI_PAGE_COMPONENTS
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
LangString Only32Bits ${LANG_ENGLISH} "The 64-bit programs do not run on this Windows."
LangString Only32Bits ${LANG_GERMAN} "Die 64-Bit-Programme laufen auf diesem Windows nicht."
LangString OlderSetup ${LANG_ENGLISH} "Programs of another setup are in this folder. Please uninstall them first, or choose another folder."
LangString OlderSetup ${LANG_GERMAN} "In diesem Ordner liegen Programme eines anderen Setups. Bitte deinstallieren Sie diese zuerst oder wählen Sie einen anderen Ordner."
LangString KindX86 ${LANG_ENGLISH} "Programs, 32-bit"
LangString KindX86 ${LANG_GERMAN} "Programme, 32 Bit"
LangString AboutX86 ${LANG_ENGLISH} "For every Windows. They work with the diary, whose database engine has 32 bits."
LangString AboutX86 ${LANG_GERMAN} "Für jedes Windows. Sie arbeiten mit dem Tagebuch zusammen, dessen Datenbank-Engine 32 Bit hat."
LangString KindX64 ${LANG_ENGLISH} "Programs, 64-bit"
LangString KindX64 ${LANG_GERMAN} "Programme, 64 Bit"
LangString AboutX64 ${LANG_ENGLISH} "For a computer without the diary's database engine, or whose diary has 64 bits."
LangString AboutX64 ${LANG_GERMAN} "Für Rechner ohne die Datenbank-Engine des Tagebuchs oder mit einem 64-Bit-Tagebuch."
LangString OnPath ${LANG_ENGLISH} "Tools on the PATH"
LangString OnPath ${LANG_GERMAN} "Werkzeuge im PATH"
LangString AboutPath ${LANG_ENGLISH} "patientdb and firststeps_batch can be called from every folder."
LangString AboutPath ${LANG_GERMAN} "patientdb und firststeps_batch lassen sich aus jedem Ordner aufrufen."
LangString PathLeft ${LANG_ENGLISH} "The environment variable PATH was left as it is: it cannot be read or written, is too long, or cannot hold this folder's name. All else is done."
LangString PathLeft ${LANG_GERMAN} "Die Umgebungsvariable PATH blieb, wie sie ist: Sie lässt sich nicht lesen oder schreiben, ist zu lang oder kann den Namen dieses Ordners nicht aufnehmen. Alles andere ist getan."
LangString ForeignTexts ${LANG_ENGLISH} "The texts in this folder ($INSTDIR\texts) are not those of this setup and are kept. Please choose another folder."
LangString ForeignTexts ${LANG_GERMAN} "Die Texte in diesem Ordner ($INSTDIR\texts) stammen nicht von diesem Setup und bleiben erhalten. Bitte wählen Sie einen anderen Ordner."
LangString InUse ${LANG_ENGLISH} "$R1 is running or cannot be replaced. Close it and try again. Nothing has been changed."
LangString InUse ${LANG_GERMAN} "$R1 läuft noch oder lässt sich nicht ersetzen. Schließen Sie das Programm und versuchen Sie es noch einmal. Bisher ist nichts geändert."
LangString NotRemoved ${LANG_ENGLISH} "$R1 could not be removed. Close the programs and uninstall once more."
LangString NotRemoved ${LANG_GERMAN} "$R1 konnte nicht entfernt werden. Schließen Sie die Programme und deinstallieren Sie noch einmal."

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
!define PATH_LEFT 5

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
  ${If} ${FileExists} "$INSTDIR\firststeps-uninstall-x86.exe"
  ${OrIf} ${FileExists} "$INSTDIR\firststeps-uninstall-x64.exe"
    StrCpy $R0 "$(OlderSetup)"
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

Var GivenFolder
Var Kind
Function .onInit
  ${IfNot} ${AtLeastWin10}
  ${OrIfNot} ${AtLeastBuild} 14393
    MessageBox MB_OK|MB_ICONSTOP "$(OldWindows)" /SD IDOK
    !insertmacro EndWith ${NOT_ALLOWED}
  ${EndIf}
  ; The folder of /D, which MultiUser would replace by its own.
  StrCpy $GivenFolder $INSTDIR
  !insertmacro MULTIUSER_INIT
  Call UseFolderOfKind
  StrCmp $GivenFolder "" +2
    StrCpy $INSTDIR $GivenFolder
FunctionEnd

Function un.onInit
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

Section "-before"
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
SectionEnd

!macro Programs KIND
  SetOutPath "$INSTDIR"
  File "${STAGE}/${KIND}/firststeps.exe"
  File "${STAGE}/${KIND}/firststeps_batch.exe"
  File "${STAGE}/${KIND}/patientdb.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Programs" "${KIND}"
!macroend

Section "$(KindX86)" SectionX86
  !insertmacro Programs x86
SectionEnd

Section /o "$(KindX64)" SectionX64
  !insertmacro Programs x64
SectionEnd

Section "-rest"
  SetOutPath "$INSTDIR"
  File "${STAGE}/${README}"
  SetOutPath "$INSTDIR\texts"
  File "${STAGE}/texts/de.ini"
  File "${STAGE}/texts/en.ini"
  SetOutPath "$INSTDIR\${LICENCES}"
  File "${STAGE}/${LICENCES}/fmt.txt"
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

; The folder on the PATH that the setup has put there, so that uninstalling takes away that one and none of the user's.
!macro TakeFromPath UN
  ReadRegStr $8 SHCTX "${UNINSTALL_KEY}" "OnPath"
  ${If} $8 != ""
    Call ${UN}RemoveFromPath
    ${If} $PathState != left
      DeleteRegValue SHCTX "${UNINSTALL_KEY}" "OnPath"
    ${EndIf}
  ${EndIf}
!macroend

!macro TellWhereThePathWasLeft
  ${If} $PathState == left
    DetailPrint "$(PathLeft)"
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(PathLeft)" /SD IDOK
    SetErrorLevel ${PATH_LEFT}
  ${EndIf}
!macroend

Section /o "$(OnPath)" SectionPath
SectionEnd

Section "-path"
  StrCpy $PathState ""
  ReadRegStr $8 SHCTX "${UNINSTALL_KEY}" "OnPath"
  ${If} $8 != $INSTDIR
  ${OrIfNot} ${SectionIsSelected} ${SectionPath}
    !insertmacro TakeFromPath ""
  ${EndIf}
  ${If} ${SectionIsSelected} ${SectionPath}
  ${AndIf} $PathState != left
    StrCpy $8 $INSTDIR
    Call AddToPath
    ${If} $PathState == changed
      WriteRegStr SHCTX "${UNINSTALL_KEY}" "OnPath" $INSTDIR
    ${EndIf}
  ${EndIf}
  !insertmacro TellWhereThePathWasLeft
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionX86} "$(AboutX86)"
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionX64} "$(AboutX64)"
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionPath} "$(AboutPath)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onSelChange
  !insertmacro StartRadioButtons $Kind
    !insertmacro RadioButton ${SectionX86}
    !insertmacro RadioButton ${SectionX64}
  !insertmacro EndRadioButtons
FunctionEnd

; $R0 becomes 1 where programs of 64 bits run: Windows 11 runs those of x64 on ARM, too.
Function LookFor64Bits
  StrCpy $R0 0
  ${If} ${IsNativeAMD64}
    StrCpy $R0 1
  ${ElseIf} ${IsNativeARM64}
  ${AndIf} ${AtLeastBuild} 22000
    StrCpy $R0 1
  ${EndIf}
FunctionEnd

!macro Choose SECTION OTHER
  !insertmacro SelectSection ${SECTION}
  !insertmacro UnselectSection ${OTHER}
  StrCpy $Kind ${SECTION}
!macroend

!macro IfOption NAME
  ClearErrors
  ${GetOptions} $R1 "${NAME}" $R2
  ${IfNot} ${Errors}
!macroend

; What is chosen before anybody is asked: what is installed there, and over it what the command line says. Called whenever it
; is known for whom to install.
Function ChooseAsBefore
  ${GetParameters} $R1
  ReadRegStr $R2 SHCTX "${UNINSTALL_KEY}" "Programs"
  !insertmacro Choose ${SectionX86} ${SectionX64}
  ${If} $R2 == x64
    !insertmacro Choose ${SectionX64} ${SectionX86}
  ${EndIf}
  !insertmacro IfOption "/x86"
    !insertmacro Choose ${SectionX86} ${SectionX64}
  ${EndIf}
  !insertmacro IfOption "/x64"
    !insertmacro Choose ${SectionX64} ${SectionX86}
  ${EndIf}
  Call LookFor64Bits
  ${If} $R0 = 0
    ${If} ${SectionIsSelected} ${SectionX64}
      MessageBox MB_OK|MB_ICONSTOP "$(Only32Bits)" /SD IDOK
      !insertmacro EndWith ${NOT_ALLOWED}
    ${EndIf}
    !insertmacro SetSectionFlag ${SectionX64} ${SF_RO}
  ${EndIf}
  ReadRegStr $R2 SHCTX "${UNINSTALL_KEY}" "OnPath"
  !insertmacro UnselectSection ${SectionPath}
  ${If} $R2 != ""
    !insertmacro SelectSection ${SectionPath}
  ${EndIf}
  !insertmacro IfOption "/Path"
    !insertmacro SelectSection ${SectionPath}
  ${EndIf}
  !insertmacro IfOption "/NoPath"
    !insertmacro UnselectSection ${SectionPath}
  ${EndIf}
FunctionEnd

; The folder that Windows has for programs of this kind, where nobody has chosen another one.
Function UseFolderOfKind
  ${If} ${SectionIsSelected} ${SectionX64}
  ${AndIf} $INSTDIR == "$PROGRAMFILES32\${NAME}"
    StrCpy $INSTDIR "$PROGRAMFILES64\${NAME}"
  ${ElseIf} ${SectionIsSelected} ${SectionX86}
  ${AndIf} $INSTDIR == "$PROGRAMFILES64\${NAME}"
    StrCpy $INSTDIR "$PROGRAMFILES32\${NAME}"
  ${EndIf}
FunctionEnd

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
  !insertmacro Remove ${LICENCES}\fmt.txt
  !insertmacro Remove ${LICENCES}\gcc-runtime.txt
  !insertmacro Remove ${LICENCES}\mingw-w64.txt
  !insertmacro Remove ${LICENCES}\sqlite.txt
  !insertmacro Remove ${LICENCES}\sqlite3-multiple-ciphers.txt
  RMDir "$INSTDIR\${LICENCES}"
  Delete "$SMPROGRAMS\${NAME}.lnk"
  StrCpy $PathState ""
  !insertmacro TakeFromPath un.
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  ; Where it runs from its own place (_?=), it stays.
  Delete "$INSTDIR\${UNINSTALLER}"
  ; Only when empty: it may be the diary's own folder, with the patients' data.
  RMDir "$INSTDIR"
  !insertmacro TellWhereThePathWasLeft
SectionEnd
