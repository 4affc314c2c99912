; The installer for Windows: plug-ins to where music programs look, the program into a folder of its
; own. makensis gets -DVERSION, -DFILES (the folder with the files) and -DRESULT. /S installs and
; uninstalls silently, /D=FOLDER chooses the program's folder.
Unicode true
Target amd64-unicode
ManifestDPIAware true
SetCompressor /SOLID lzma
SetDateSave off ; the same installer whenever it is made
RequestExecutionLevel admin

!include "FileFunc.nsh"
!include "MUI2.nsh"
!include "x64.nsh"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Zelvatone"

Name "Zelvatone ${VERSION}"
OutFile "${RESULT}"
InstallDir "$PROGRAMFILES64\Zelvatone"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "Zelvatone ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Zelvatone"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Zelvatone installer"
VIAddVersionKey "CompanyName" "Quillfeather"
VIAddVersionKey "LegalCopyright" "MIT licence"

!insertmacro MUI_PAGE_LICENSE "${FILES}/LICENSE.txt"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var VstFolder

Function .onInit
    SetRegView 64
    ReadRegStr $VstFolder HKLM "Software\VST" "VSTPluginsPath"
    ${If} $VstFolder == ""
        StrCpy $VstFolder "$PROGRAMFILES64\VSTPlugins"
    ${EndIf}
FunctionEnd

Section "Program and uninstaller" Program
    SectionIn RO
    SetOutPath "$INSTDIR"
    File "${FILES}/zelvatone.exe"
    File "${FILES}/README.txt"
    File "${FILES}/LICENSE.txt"
    File "${FILES}/COPYRIGHT.txt"
    File "${FILES}/RELEASE-NOTES.txt"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "Zelvatone"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "Quillfeather"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "VstFolder" "$VstFolder"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section "VST 2.4 plug-in" Vst
    SetOutPath "$VstFolder"
    File "${FILES}/zelvatone.dll"
SectionEnd

Section "CLAP plug-in" Clap
    SetOutPath "$COMMONFILES64\CLAP"
    File "${FILES}/zelvatone.clap"
SectionEnd

LangString ProgramText ${LANG_ENGLISH} "Plays MIDI files into WAV files, from the command line."
LangString VstText ${LANG_ENGLISH} "The instrument for music programs that load VST 2."
LangString ClapText ${LANG_ENGLISH} "The instrument for music programs that load CLAP."
!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${Program} $(ProgramText)
    !insertmacro MUI_DESCRIPTION_TEXT ${Vst} $(VstText)
    !insertmacro MUI_DESCRIPTION_TEXT ${Clap} $(ClapText)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; RMDir without /r removes a folder only when it is empty: those of other plug-ins stay.
Section "Uninstall"
    SetRegView 64
    ReadRegStr $VstFolder HKLM "${UNINSTALL_KEY}" "VstFolder"
    Delete "$VstFolder\zelvatone.dll"
    RMDir "$VstFolder"
    Delete "$COMMONFILES64\CLAP\zelvatone.clap"
    RMDir "$COMMONFILES64\CLAP"
    Delete "$INSTDIR\zelvatone.exe"
    Delete "$INSTDIR\README.txt"
    Delete "$INSTDIR\LICENSE.txt"
    Delete "$INSTDIR\COPYRIGHT.txt"
    Delete "$INSTDIR\RELEASE-NOTES.txt"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
