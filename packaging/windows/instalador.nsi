; The installer: the programs for all users of a machine. It says what it does in Portuguese, and everything it takes
; away is what it brought. Defined by the build: VERSAO, BITS, PASTA (the folder to install), ICONE, LISTAS, SAIDA.
Unicode true
!if ${BITS} == 64
  Target amd64-unicode
  !define PROGRAMAS $PROGRAMFILES64
!else
  Target x86-unicode
  !define PROGRAMAS $PROGRAMFILES32
!endif
!include LogicLib.nsh
!include MUI2.nsh
!include WinVer.nsh
!include FileFunc.nsh
!include "${LISTAS}"

!define NO_REGISTO Software\Microsoft\Windows\CurrentVersion\Uninstall\ORVEX
!define EM_USO 2 ; how it ends when it can do nothing, as when the script is stopped

Name "ORVEX ${VERSAO}"
OutFile "${SAIDA}"
InstallDir "${PROGRAMAS}\ORVEX"
InstallDirRegKey HKLM Software\ORVEX Pasta
RequestExecutionLevel admin
SetCompressor /SOLID lzma
AllowSkipFiles off
ManifestDPIAware true
ManifestLongPathAware true
BrandingText " "
VIProductVersion ${VERSAO}.0
VIAddVersionKey /LANG=0 ProductName ORVEX
VIAddVersionKey /LANG=0 ProductVersion ${VERSAO}
VIAddVersionKey /LANG=0 FileVersion ${VERSAO}
VIAddVersionKey /LANG=0 FileDescription "Instalador do ORVEX"
VIAddVersionKey /LANG=0 CompanyName ORVEX
VIAddVersionKey /LANG=0 LegalCopyright ORVEX

!define MUI_ICON "${ICONE}"
!define MUI_UNICON "${ICONE}"
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TEXT "O ORVEX foi instalado. As definições e os parâmetros da empresa ficam em $APPDATA\ORVEX: \
o ficheiro documentos\installation.md diz o que escrever neles, e «Verificar a instalação», no menu Iniciar, o que falta."
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE Portuguese

; A program that runs, whoever runs it, cannot be opened for writing.
!macro VerificaPrograma programa
  ${If} ${FileExists} "$INSTDIR\${programa}"
    ClearErrors
    FileOpen $0 "$INSTDIR\${programa}" a
    ${If} ${Errors}
      StrCpy $1 "$1 ${programa}"
    ${Else}
      FileClose $0
    ${EndIf}
  ${EndIf}
!macroend

!macro ExigeParado
  StrCpy $1 ""
  !insertmacro VerificaProgramas
  ${If} $1 != ""
    MessageBox MB_OK|MB_ICONEXCLAMATION "O ORVEX está a ser usado neste computador:$1.$\r$\n$\r$\nFeche-o, também nas \
sessões dos outros utilizadores, e volte a tentar. Nada foi alterado." /SD IDOK
    SetErrorLevel ${EM_USO}
    Quit
  ${EndIf}
!macroend

!macro Contexto
  SetShellVarContext all
  !if ${BITS} == 64
    SetRegView 64
  !endif
!macroend

Function .onInit
  !insertmacro Contexto
  ${IfNot} ${AtLeastWin10}
    MessageBox MB_OK|MB_ICONSTOP "O ORVEX precisa do Windows 10 ou de um mais recente." /SD IDOK
    SetErrorLevel ${EM_USO}
    Quit
  ${EndIf}
FunctionEnd

Function un.onInit
  !insertmacro Contexto
FunctionEnd

; A folder for what belongs to the machine. Its rights are set when it is made, and stay the administrator's affair.
!macro FazPasta pasta direitos
  ${IfNot} ${FileExists} "${pasta}\*.*"
    CreateDirectory "${pasta}"
    nsExec::ExecToLog '"$SYSDIR\icacls.exe" "${pasta}" /inheritance:r /grant:r *S-1-5-18:(OI)(CI)F *S-1-5-32-544:(OI)(CI)F *S-1-5-32-545:(OI)(CI)${direitos}'
    Pop $0
    ${If} $0 != 0
      RMDir "${pasta}"
      MessageBox MB_OK|MB_ICONEXCLAMATION "Não foi possível dar aos utilizadores direitos na pasta ${pasta}: faça-a à \
mão (documentos\windows.md)." /SD IDOK
    ${EndIf}
  ${EndIf}
!macroend

; The menu, by what is done with each entry of it.
!macro Entradas macro
  !insertmacro ${macro} "Guias de remessa" 2
  !insertmacro ${macro} "Sobras" 1
  !insertmacro ${macro} "Quebras" 3
  !insertmacro ${macro} "Consumos internos" 4
  !insertmacro ${macro} "Transferência para a ORVEX" 5
  !insertmacro ${macro} "Transferência para outro cliente" 6
!macroend
!macro FazEntrada nome argumento
  CreateShortCut "$SMPROGRAMS\ORVEX\${nome}.lnk" "$INSTDIR\orvex.exe" "${argumento}"
!macroend
!macro TiraEntrada nome argumento
  Delete "$SMPROGRAMS\ORVEX\${nome}.lnk"
!macroend
!define CONSULTAS "$SMPROGRAMS\ORVEX\Consultas.lnk"
!define VERIFICAR "$SMPROGRAMS\ORVEX\Verificar a instalação.lnk"

Section
  ReadRegStr $2 HKLM Software\ORVEX Pasta
  ${If} $2 != ""
  ${AndIf} $2 != $INSTDIR
  ${AndIf} ${FileExists} "$2\desinstalar.exe"
    MessageBox MB_OK|MB_ICONSTOP "O ORVEX já está instalado em $2: desinstale-o primeiro, ou instale na mesma pasta. Nada foi \
alterado." /SD IDOK
    SetErrorLevel ${EM_USO}
    Quit
  ${EndIf}
  !insertmacro ExigeParado
  ; What an older version brought and this one does not goes; what is not its own stays.
  ${If} ${FileExists} "$INSTDIR\desinstalar.exe"
    ExecWait '"$INSTDIR\desinstalar.exe" /S _?=$INSTDIR' $0
    ${If} $0 != 0
      MessageBox MB_OK|MB_ICONSTOP "A versão instalada não pôde ser retirada. Nada foi instalado." /SD IDOK
      SetErrorLevel ${EM_USO}
      Quit
    ${EndIf}
  ${EndIf}

  SetOutPath "$INSTDIR"
  File /r "${PASTA}\*.*"
  WriteUninstaller "$INSTDIR\desinstalar.exe"
  !insertmacro FazPasta "$APPDATA\ORVEX" RX
  ${If} ${FileExists} "$APPDATA\ORVEX\*.*"
    !insertmacro FazPasta "$APPDATA\ORVEX\diario" M
  ${EndIf}

  CreateDirectory "$SMPROGRAMS\ORVEX"
  !insertmacro Entradas FazEntrada
  CreateShortCut "${CONSULTAS}" "$INSTDIR\orvex-consulta.exe"
  CreateShortCut "${VERIFICAR}" "$SYSDIR\cmd.exe" '/k ""$INSTDIR\orvex-diagnostico.exe""' "$INSTDIR\orvex.exe"

  WriteRegStr HKLM Software\ORVEX Pasta "$INSTDIR"
  WriteRegStr HKLM "${NO_REGISTO}" DisplayName ORVEX
  WriteRegStr HKLM "${NO_REGISTO}" DisplayVersion ${VERSAO}
  WriteRegStr HKLM "${NO_REGISTO}" Publisher ORVEX
  WriteRegStr HKLM "${NO_REGISTO}" DisplayIcon "$INSTDIR\orvex.exe"
  WriteRegStr HKLM "${NO_REGISTO}" InstallLocation "$INSTDIR"
  WriteRegStr HKLM "${NO_REGISTO}" UninstallString '"$INSTDIR\desinstalar.exe"'
  WriteRegStr HKLM "${NO_REGISTO}" QuietUninstallString '"$INSTDIR\desinstalar.exe" /S'
  WriteRegDWORD HKLM "${NO_REGISTO}" NoModify 1
  WriteRegDWORD HKLM "${NO_REGISTO}" NoRepair 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD HKLM "${NO_REGISTO}" EstimatedSize "$0"
SectionEnd

; Settings, parameters, journals and logs stay.
Section Uninstall
  !insertmacro ExigeParado
  !insertmacro ApagaFicheiros
  Delete "$INSTDIR\desinstalar.exe"
  RMDir "$INSTDIR"
  !insertmacro Entradas TiraEntrada
  Delete "${CONSULTAS}"
  Delete "${VERIFICAR}"
  RMDir "$SMPROGRAMS\ORVEX"
  DeleteRegKey HKLM "${NO_REGISTO}"
  DeleteRegKey HKLM Software\ORVEX
SectionEnd
