; The setup of Cobweave for Windows: for one user, without the rights of an administrator. The script
; "package" makes it, and says what the version is (VERSION) and where everything is: what is installed
; (FILES), the commands that remove the movies (MOVIES), the icon (ICON), the setup (OUTPUT).
;
; /S asks nothing, /AUTOSTART starts the program with the session, /NOAUTOSTART no longer, /D=FOLDER (the
; last one, without quotes) puts it there. The uninstaller takes /S too; /ALL has it take settings and
; notes as well.

Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include WinMessages.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Cobweave"
!define RUN "Software\Microsoft\Windows\CurrentVersion\Run"

Name "Cobweave ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Cobweave"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Cobweave"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Setup of Cobweave"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Cobweave authors"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\cobweave.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Asks each running Cobweave of this user to end, and waits until the file of the one that is about to
; be replaced can be written, five seconds at most.
!macro EndProgram
    StrCpy $0 0
    ${Do}
        FindWindow $1 "CobweaveWindow"
        ${If} $1 <> 0
            SendMessage $1 ${WM_CLOSE} 0 0 /TIMEOUT=1000
        ${EndIf}
        ${IfNot} ${FileExists} "$INSTDIR\cobweave.exe"
            ${ExitDo}
        ${EndIf}
        ClearErrors
        FileOpen $2 "$INSTDIR\cobweave.exe" a
        ${IfNot} ${Errors}
            FileClose $2
            ${ExitDo}
        ${EndIf}
        Sleep 100
        IntOp $0 $0 + 1
    ${LoopUntil} $0 >= 50
    ClearErrors
!macroend

Section "Cobweave"
    SectionIn RO
    !insertmacro EndProgram
    SetOutPath "$INSTDIR"
    File "${FILES}\cobweave.exe"
    File "${FILES}\*.swf"
    File "${FILES}\*.txt"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortcut "$SMPROGRAMS\Cobweave.lnk" "$INSTDIR\cobweave.exe"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Cobweave"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\cobweave.exe"
    WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

; Without this choice, the next section, it is taken back.
Section
    DeleteRegValue HKCU "${RUN}" "Cobweave"
SectionEnd

Section /o "Start with Windows" Autostart
    WriteRegStr HKCU "${RUN}" "Cobweave" '"$INSTDIR\cobweave.exe"'
SectionEnd

Function .onInit
    ; A setup over an older one leaves the choice as it was.
    ReadRegStr $0 HKCU "${RUN}" "Cobweave"
    ${If} $0 != ""
        !insertmacro SelectSection ${Autostart}
    ${EndIf}
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/AUTOSTART" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${Autostart}
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/NOAUTOSTART" $1
    ${IfNot} ${Errors}
        !insertmacro UnselectSection ${Autostart}
    ${EndIf}
FunctionEnd

; File by file: the folder may hold notes, and what others have put there.
Section "un.Cobweave"
    SectionIn RO
    !insertmacro EndProgram
    Delete "$INSTDIR\cobweave.exe"
    !include "${MOVIES}"
    Delete "$INSTDIR\LICENSE.txt"
    Delete "$INSTDIR\README.txt"
    Delete "$INSTDIR\uninstall.exe"
    Delete "$SMPROGRAMS\Cobweave.lnk"
    DeleteRegKey HKCU "${UNINSTALL}"
    DeleteRegValue HKCU "${RUN}" "Cobweave"
    RMDir "$INSTDIR"
SectionEnd

Section /o "un.Settings and notes" UserFiles
    Delete "$APPDATA\Cobwaeve\settings.db*"
    RMDir "$APPDATA\Cobwaeve"
    Delete "$INSTDIR\notes.cwv"
    Delete "$LOCALAPPDATA\Cobweave\notes.cwv"
    RMDir "$LOCALAPPDATA\Cobweave"
    RMDir "$INSTDIR"
SectionEnd

Function un.onInit
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/ALL" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${UserFiles}
    ${EndIf}
FunctionEnd
