#!/bin/bash
# Makes the environment of Wine that the tests run in, and sees that it runs programs of their word size:
#
#     prepara.sh 64|32
#
# It stays in the folder of the build. corre.sh goes on from here.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
case ${1-} in
64) readonly TRIPLO=x86_64-w64-mingw32 ;;
32) readonly TRIPLO=i686-w64-mingw32 ;;
*) echo "uso: $0 64|32" >&2 && exit 2 ;;
esac
readonly CONSTRUCAO=$PWD/build/windows/testes-$1
export WINEPREFIX=$CONSTRUCAO/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml=' LC_ALL=C.UTF-8
unset DISPLAY WAYLAND_DISPLAY
readonly TEMPORARIA='Ensaios de São João (água)'
if [ ! -e "$WINEPREFIX/feito" ]; then
    rm -rf "$WINEPREFIX" && mkdir -p "$WINEPREFIX"
    wineboot -i > /dev/null 2>&1
    # Where Wine lacks the word size, a program does nothing and ends with 0: every test would pass.
    echo 'int puts(const char*); int main(void) { return puts("corre") < 0; }' |
        $TRIPLO-gcc-posix -x c - -o "$WINEPREFIX/prova.exe"
    if [[ $(wine "$WINEPREFIX/prova.exe" 2> /dev/null) != corre* ]]; then
        echo "O Wine desta máquina não corre programas de $1 bits. Para os de 32, no Debian, são" \
            "precisos os pacotes wine32:i386, libodbc2:i386 e tdsodbc:i386, e um sistema que corra programas de 32 bits." >&2
        exit 1
    fi
    for nome in TEMP TMP; do
        wine reg add 'HKCU\Environment' /v $nome /d "C:\\$TEMPORARIA" /f > /dev/null 2>&1
    done
    wineserver -w
    touch "$WINEPREFIX/feito"
fi
