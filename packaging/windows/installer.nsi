; The installer for Windows: for the user alone, so that nobody has to be an administrator.
; makensis -DVERSION=... -DFILES=file -DICON=file -DOUT=file
Target amd64-unicode
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\VK32"
SetCompressor /SOLID lzma
BrandingText "VK32 ${VERSION}"
SetDateSave off
ManifestDPIAware true
Name "VK32 ${VERSION}"
OutFile "${OUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\VK32"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!include MUI2.nsh
!include FileFunc.nsh
!include "${FILES}"

!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "VK32"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs VK32"
VIAddVersionKey LegalCopyright "Copyright 2026 the maintainers of VK32"

; A program that runs can't be replaced or taken away: its file can't be opened to be written.
!macro DemandNotRunning PROGRAM
  ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
    ClearErrors
    FileOpen $0 "$INSTDIR\${PROGRAM}" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONEXCLAMATION "${PROGRAM} is running, or $INSTDIR can't be written. End it, then try again." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend
!macro DemandNoneRunning
  !insertmacro DemandNotRunning vk32.exe
  !insertmacro DemandNotRunning vk32-cli.exe
  !insertmacro DemandNotRunning vk32-script.exe
  !insertmacro DemandNotRunning vk32-sim.exe
!macroend

Section
  !insertmacro DemandNoneRunning
  ; What the last version had and this one has no more must not stay.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  ${EndIf}
  !insertmacro PutFiles
  SetOutPath "$INSTDIR"  ; where what the shortcuts start begins
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateDirectory "$SMPROGRAMS\VK32"
  CreateShortcut "$SMPROGRAMS\VK32\VK32.lnk" "$INSTDIR\vk32.exe"
  CreateShortcut "$SMPROGRAMS\VK32\VK32 Manual.lnk" "$INSTDIR\manual\index.html"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "VK32"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\vk32.exe"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The maintainers of VK32"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

; File by file: what the user has put into the folder stays.
Section Uninstall
  !insertmacro DemandNoneRunning
  !insertmacro TakeFiles
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
  RMDir "$LOCALAPPDATA\Programs"  ; which stays if others are in it
  Delete "$SMPROGRAMS\VK32\VK32.lnk"
  Delete "$SMPROGRAMS\VK32\VK32 Manual.lnk"
  RMDir "$SMPROGRAMS\VK32"
  DeleteRegKey HKCU "${UNINSTALL}"
SectionEnd
