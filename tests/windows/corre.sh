#!/bin/bash
# Runs the tests that were built for Windows under Wine, in an environment of their own that stays in the folder of the
# build:
#
#     corre.sh 64|32 [arguments of ctest]
#
# Temporary files lie in a folder with accents and blanks, as every test that makes a company uses it; in memory where the
# machine lets them.
set -euo pipefail
cd "$(dirname "$0")/../.."
readonly CONSTRUCAO=$PWD/build/windows/testes-$1
case $1 in
64) readonly TRIPLO=x86_64-w64-mingw32 ;;
32) readonly TRIPLO=i686-w64-mingw32 ;;
*) echo "uso: $0 64|32 [...]" >&2 && exit 2 ;;
esac
shift

export WINEPREFIX=$CONSTRUCAO/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml=' LC_ALL=C.UTF-8
unset DISPLAY WAYLAND_DISPLAY
readonly TEMPORARIA='Ensaios de São João (água)'
if [ ! -e "$WINEPREFIX/feito" ]; then
    rm -rf "$WINEPREFIX" && mkdir -p "$WINEPREFIX"
    wineboot -i > /dev/null 2>&1
    for nome in TEMP TMP; do
        wine reg add 'HKCU\Environment' /v $nome /d "C:\\$TEMPORARIA" /f > /dev/null 2>&1
    done
    wineserver -w
    touch "$WINEPREFIX/feito"
fi
PASTA=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo "$CONSTRUCAO")")
ln -sfn "$PASTA" "$WINEPREFIX/drive_c/$TEMPORARIA"
# One server for all the tests, which holds none of their output.
wineserver -p && wine cmd /c exit > /dev/null 2>&1
trap 'wineserver -k; rm -rf "$PASTA"' EXIT

# The libraries of the compiler, where it has them.
WINEPATH="$(dirname "$($TRIPLO-g++-posix -print-file-name=libstdc++-6.dll)");$(dirname "$($TRIPLO-gcc-posix -print-file-name=libwinpthread-1.dll)")"
export WINEPATH
ctest --test-dir "$CONSTRUCAO" --output-on-failure --timeout 600 -j 2 "$@"
