; The installer of the window and the tools: for one user, without the rights of an administrator; /S is silent.
; makensis -DSTAGE=folder -DOUTPUT=file -DVERSION=1.2.0 -DTARGET=amd64-unicode belvor.nsi
Unicode true
Target ${TARGET}
Name "Belvor"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Belvor"
InstallDirRegKey HKCU "Software\Calderwood\Belvor" "InstallFolder"
SetCompressor /SOLID lzma
ShowInstDetails nevershow
BrandingText " "
Icon "${ICON}"
UninstallIcon "${ICON}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Belvor"
VIAddVersionKey "FileDescription" "Installs Belvor"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "Calderwood"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Belvor"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

; A type of file is offered to the program under "Open with"; what opens it now stays.
!macro Offer ending kind
  WriteRegStr HKCU "Software\Classes\.${ending}\OpenWithProgids" "Belvor.${kind}" ""
!macroend
!macro OfferModel ending
  !insertmacro Offer ${ending} Model
  WriteRegStr HKCU "Software\Classes\Applications\belvor.exe\SupportedTypes" ".${ending}" ""
!macroend
!macro Withdraw ending kind
  DeleteRegValue HKCU "Software\Classes\.${ending}\OpenWithProgids" "Belvor.${kind}"
  DeleteRegKey /ifempty HKCU "Software\Classes\.${ending}\OpenWithProgids"
  DeleteRegKey /ifempty HKCU "Software\Classes\.${ending}"
!macroend

Section
  SetOutPath "$INSTDIR"
  ; A program that runs cannot be replaced: then nothing is.
  ClearErrors
  IfFileExists "$INSTDIR\belvor.exe" 0 free
  FileOpen $0 "$INSTDIR\belvor.exe" a
  IfErrors 0 writable
  MessageBox MB_OK|MB_ICONSTOP "Belvor is running. Close it and start the installation again." /SD IDOK
  SetErrorLevel 2
  Quit
writable:
  FileClose $0
free:
  File "${STAGE}\belvor.exe"
  File "${STAGE}\belvor-render.exe"
  File "${STAGE}\belvor-image.exe"
  File "${STAGE}\Belvor.html"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortCut "$SMPROGRAMS\Belvor.lnk" "$INSTDIR\belvor.exe"

  WriteRegStr HKCU "Software\Calderwood\Belvor" "InstallFolder" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Belvor"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "Calderwood"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\belvor.exe"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1

  WriteRegStr HKCU "Software\Classes\Belvor.Model" "" "Belvor model"
  WriteRegStr HKCU "Software\Classes\Belvor.Model\DefaultIcon" "" "$INSTDIR\belvor.exe,0"
  WriteRegStr HKCU "Software\Classes\Belvor.Model\shell\open\command" "" '"$INSTDIR\belvor.exe" "%1"'
  WriteRegStr HKCU "Software\Classes\Applications\belvor.exe\shell\open\command" "" '"$INSTDIR\belvor.exe" "%1"'
  !insertmacro OfferModel thf
  !insertmacro OfferModel dxf
  !insertmacro OfferModel man
  ; A picture is not shown by the window: the tool says what it holds, in a console that stays.
  WriteRegStr HKCU "Software\Classes\Belvor.Picture" "" "Ombr picture"
  WriteRegStr HKCU "Software\Classes\Belvor.Picture\Application" "ApplicationName" "belvor-image info"
  WriteRegStr HKCU "Software\Classes\Belvor.Picture\DefaultIcon" "" "$INSTDIR\belvor.exe,0"
  WriteRegStr HKCU "Software\Classes\Belvor.Picture\shell\open\command" "" \
              '"$SYSDIR\cmd.exe" /k ""$INSTDIR\belvor-image.exe" info "%1""'
  !insertmacro Offer omb Picture
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd

Section "Uninstall"
  Delete "$INSTDIR\belvor.exe"
  Delete "$INSTDIR\belvor-render.exe"
  Delete "$INSTDIR\belvor-image.exe"
  Delete "$INSTDIR\Belvor.html"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Belvor.lnk"
  !insertmacro Withdraw thf Model
  !insertmacro Withdraw dxf Model
  !insertmacro Withdraw man Model
  !insertmacro Withdraw omb Picture
  DeleteRegKey HKCU "Software\Classes\Belvor.Picture"
  DeleteRegKey HKCU "Software\Classes\Belvor.Model"
  DeleteRegKey HKCU "Software\Classes\Applications\belvor.exe"
  DeleteRegKey HKCU "${UNINSTALL}"
  ; The recent files and the settings stay for a later installation; the folder's place does not.
  DeleteRegValue HKCU "Software\Calderwood\Belvor" "InstallFolder"
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd
