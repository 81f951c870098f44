; A folder on the PATH: the value "Path" of the user's environment, or of the computer's where the installation is for all.
; Texts of NSIS end at 1024 characters, and a PATH that was cut off would be lost: it is read, changed and written in memory of
; its own, with its kind (REG_SZ, REG_EXPAND_SZ) and without a change to anything else that is in it.
;
; AddToPath and RemoveFromPath take the folder in $8. $PathState becomes "changed"; "same" where nothing was to do; or "left"
; where the value is of another kind, cannot be read or written, would be too long, or could not hold the folder's name.
Var PathState

; Longer ones do not fit into a process's environment.
!define LONGEST_PATH 32000

!macro PathFunctions UN

; $1 becomes the key, $2 the kind, $4 a buffer with ";", the value and ";", and with room for the folder in $8. $4 is 0 where
; that cannot be had.
Function ${UN}ReadPath
  StrCpy $1 0
  StrCpy $4 0
  StrCpy $5 -2147483647 ; HKEY_CURRENT_USER
  StrCpy $6 "Environment"
  ${If} $MultiUser.InstallMode == AllUsers
    StrCpy $5 -2147483646 ; HKEY_LOCAL_MACHINE
    StrCpy $6 "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
  ${EndIf}
  ; To read and to write.
  System::Call 'advapi32::RegCreateKeyExW(p r5, t r6, i 0, p 0, i 0, i 0x2001F, p 0, *p .r1, p 0) i.r0'
  ${If} $0 <> 0
    Return
  ${EndIf}
  StrCpy $2 2 ; REG_EXPAND_SZ
  StrCpy $3 0
  System::Call 'advapi32::RegQueryValueExW(p r1, t "Path", p 0, *i 2 r2, p 0, *i 0 r3) i.r0'
  ${If} $0 = 2 ; ERROR_FILE_NOT_FOUND
    StrCpy $2 2
    StrCpy $3 0
  ${ElseIf} $0 <> 0
    Return
  ${EndIf}
  ${If} $2 <> 1
  ${AndIf} $2 <> 2
    Return
  ${EndIf}
  StrLen $7 $8
  IntOp $7 $7 * ${NSIS_CHAR_SIZE}
  IntOp $7 $7 + $3
  IntOp $7 $7 + 16
  System::Alloc $7 ; filled with 0
  Pop $4
  System::Call 'kernel32::lstrcatW(p r4, t ";")'
  IntPtrOp $9 $4 + ${NSIS_CHAR_SIZE}
  StrCpy $0 0
  ${If} $3 > 0
    System::Call 'advapi32::RegQueryValueExW(p r1, t "Path", p 0, p 0, p r9, *i r3 r3) i.r0'
  ${EndIf}
  ; A text that goes on behind its end would be cut off there.
  System::Call 'kernel32::lstrlenW(p r9) i.r7'
  IntOp $7 $7 * ${NSIS_CHAR_SIZE}
  IntOp $6 $3 - $7
  ${If} $0 <> 0
  ${OrIf} $6 > ${NSIS_CHAR_SIZE}
    System::Free $4
    StrCpy $4 0
    Return
  ${EndIf}
  System::Call 'kernel32::lstrcatW(p r4, t ";")'
FunctionEnd

; $5 becomes the place of ";folder;" in the buffer, or 0.
Function ${UN}FindInPath
  StrCpy $7 ";$8;"
  System::Call 'shlwapi::StrStrIW(p r4, t r7) p.r5'
FunctionEnd

; Stores the text at $9 as the value and tells running programs. Its characters are counted in $7.
Function ${UN}WritePath
  System::Call 'kernel32::lstrlenW(p r9) i.r7'
  ${If} $7 > ${LONGEST_PATH}
    Return
  ${EndIf}
  ${If} $7 = 0
    System::Call 'advapi32::RegDeleteValueW(p r1, t "Path") i.r0'
  ${Else}
    IntOp $7 $7 + 1
    IntOp $7 $7 * ${NSIS_CHAR_SIZE}
    System::Call 'advapi32::RegSetValueExW(p r1, t "Path", i 0, i r2, p r9, i r7) i.r0'
  ${EndIf}
  ${If} $0 = 0
    StrCpy $PathState changed
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=2000
  ${EndIf}
FunctionEnd

Function ${UN}ClosePath
  ${If} $4 <> 0
    System::Free $4
  ${EndIf}
  ${If} $1 <> 0
    System::Call 'advapi32::RegCloseKey(p r1)'
  ${EndIf}
FunctionEnd

Function ${UN}RemoveFromPath
  StrCpy $PathState left
  Call ${UN}ReadPath
  ${If} $4 <> 0
    Call ${UN}FindInPath
    ${If} $5 = 0
      StrCpy $PathState same
    ${Else}
      ; What stands behind the folder moves to its place.
      StrLen $7 ";$8"
      IntOp $7 $7 * ${NSIS_CHAR_SIZE}
      IntPtrOp $6 $5 + $7
      System::Call 'kernel32::lstrlenW(p r6) i.r7'
      IntOp $7 $7 + 1
      IntOp $7 $7 * ${NSIS_CHAR_SIZE}
      System::Call 'kernel32::RtlMoveMemory(p r5, p r6, p r7)'
      ; Without the ";" that were put around it.
      System::Call 'kernel32::lstrlenW(p r4) i.r7'
      IntPtrOp $9 $4 + ${NSIS_CHAR_SIZE}
      ${If} $7 > 1
        IntOp $7 $7 - 1
        IntOp $7 $7 * ${NSIS_CHAR_SIZE}
        IntPtrOp $6 $4 + $7
        System::Call '*$6(&i${NSIS_CHAR_SIZE} 0)'
      ${EndIf}
      Call ${UN}WritePath
    ${EndIf}
  ${EndIf}
  Call ${UN}ClosePath
FunctionEnd
!macroend

!insertmacro PathFunctions ""
!insertmacro PathFunctions "un."

Function AddToPath
  StrCpy $PathState left
  ; The one ends a folder's name, the other names a variable.
  System::Call 'shlwapi::StrStrIW(t r8, t ";") p.r5'
  System::Call 'shlwapi::StrStrIW(t r8, t "%") p.r6'
  ${If} $5 <> 0
  ${OrIf} $6 <> 0
    Return
  ${EndIf}
  Call ReadPath
  ${If} $4 <> 0
    Call FindInPath
    ${If} $5 <> 0
      StrCpy $PathState same
    ${Else}
      System::Call 'kernel32::lstrcatW(p r4, t r8)'
      ; Of ";value;folder" what stands behind the first ";", of ";;folder" the folder.
      IntPtrOp $9 $4 + ${NSIS_CHAR_SIZE}
      ${If} $3 <= ${NSIS_CHAR_SIZE}
        IntPtrOp $9 $9 + ${NSIS_CHAR_SIZE}
      ${EndIf}
      Call WritePath
    ${EndIf}
  ${EndIf}
  Call ClosePath
FunctionEnd
