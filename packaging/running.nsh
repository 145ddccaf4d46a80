; Ends a running copy of the program and restarts it with the user's rights. The functions overwrite $0 to $5.

Var oldFolder     ; the folder of the program to replace or remove
Var closedProgram ; the path of the copy that was closed, or empty
Var closedToken   ; a token with the user and rights of that copy

!macro sharedFunctions un

; Pushes 1 if a copy of the program runs, else 0.
Function ${un}isRunning
    StrCpy $5 0
    System::Call 'kernel32::OpenMutex(i 0x100000, i 0, t "${VENDOR} ${TITLE}") p .r3 ?e' ; SYNCHRONIZE
    Pop $4
    ${If} $3 P<> 0
        System::Call 'kernel32::CloseHandle(p r3)'
        StrCpy $5 1
    ${ElseIf} $4 = 5 ; ERROR_ACCESS_DENIED: the copy has more rights than this run
        StrCpy $5 1
    ${ElseIf} ${FileExists} "$oldFolder\scheduler.exe"
        ; A copy that another user runs has its own mutex, but Windows locks its file.
        ClearErrors
        FileOpen $3 "$oldFolder\scheduler.exe" a
        ${If} ${Errors}
            StrCpy $5 1
        ${EndIf}
        FileClose $3
    ${EndIf}
    Push $5
FunctionEnd

; Ends a running copy through its Exit command. The copy may ask the user, who has a minute to answer. If the copy does
; not end, a message offers to try again; a silent run aborts instead.
Function ${un}closeProgram
    retry:
    Call ${un}isRunning
    Pop $0
    ${If} $0 = 0
        Return
    ${EndIf}
    FindWindow $1 "scheduler" "${TITLE}"
    ${If} $1 P= 0
        FindWindow $1 "scheduler" "${TITLE} (suspended)"
    ${EndIf}
    ${If} $1 P<> 0
        !if "${un}" == ""
            Call rememberProgram
        !endif
        SendMessage $1 ${WM_COMMAND} 2012 0 /TIMEOUT=1000
        ; The installer's window could cover the program's question.
        System::Call 'user32::GetLastActivePopup(p r1) p .r2'
        System::Call 'user32::SetForegroundWindow(p r2)'
        HideWindow
        StrCpy $0 600 ; tenths of a second
        ${DoWhile} $0 > 0
            System::Call 'user32::IsWindowVisible(p r2) i .r3'
            ${If} $2 P= $1
            ${OrIf} $3 = 0
                ${Break}
            ${EndIf}
            Sleep 100
            IntOp $0 $0 - 1
        ${Loop}
        BringToFront
    ${EndIf}
    ; After the answer, the program takes a moment to end.
    StrCpy $2 100 ; tenths of a second
    ${DoWhile} $2 > 0
        Call ${un}isRunning
        Pop $0
        ${If} $0 = 0
            Return
        ${EndIf}
        Sleep 100
        IntOp $2 $2 - 1
    ${Loop}
    StrCpy $closedProgram ""
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
        "The ${TITLE} is still running.$\n$\nChoose Exit from the menu of its icon, then try again." \
        /SD IDCANCEL IDRETRY retry
    SetErrorLevel 2
    Abort "The ${TITLE} is still running."
FunctionEnd

!macroend
!insertmacro sharedFunctions ""
!insertmacro sharedFunctions "un."

; Starts the program through the shell, without the installer's rights. With those rights, Windows would not
; redirect the program to the user's copies of the schedule and of registry keys.
Function startProgram
    Exec '"$WINDIR\explorer.exe" "${PROGRAM}"'
FunctionEnd

; Stores the path and the token of the copy that owns the window $1.
Function rememberProgram
    System::Call 'user32::GetWindowThreadProcessId(p r1, *i .r2)'
    System::Call 'kernel32::OpenProcess(i 0x1000, i 0, i r2) p .r3' ; PROCESS_QUERY_LIMITED_INFORMATION
    System::Call 'kernel32::QueryFullProcessImageName(p r3, i 0, t .s, *i ${NSIS_MAX_STRLEN})'
    Pop $closedProgram
    System::Call 'advapi32::OpenProcessToken(p r3, i 2, *p .r4)' ; TOKEN_DUPLICATE
    System::Call 'advapi32::DuplicateTokenEx(p r4, i 0x18B, p 0, i 2, i 1, *p .s)' ; the rights needed to start a process
    Pop $closedToken
FunctionEnd

; If a copy was closed, starts the program $0 hidden, with the user and rights of that copy. Does not pass "/s", which
; would also start the entries "at startup".
Function startAgain
    ${If} $closedProgram == ""
        Return
    ${EndIf}
    ${If} $MultiUser.Privileges != "Admin"
        ExecShell "open" "$0" "" SW_HIDE
        Return
    ${EndIf}
    ; A STARTUPINFO with STARTF_USESHOWWINDOW and SW_HIDE, and a PROCESS_INFORMATION.
    System::Call '*(i 68, p, p, p, i, i, i, i, i, i, i, i 1, &i2 0, &i2, p, p, p, p) p .r1'
    System::Call '*(p, p, i, i) p .r2'
    System::Call `advapi32::CreateProcessWithTokenW(p $closedToken, i 0, p 0, w '"$0"', i 0, p 0, p 0, p r1, p r2) i .r3`
    ${If} $3 = 0
        Exec '"$WINDIR\explorer.exe" "$0"'
    ${EndIf}
FunctionEnd
