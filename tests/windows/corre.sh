#!/bin/bash
# Runs the tests that were built for Windows under Wine, in an environment of their own (prepara.sh):
#
#     corre.sh 64|32 [arguments of ctest]
#
# Temporary files lie in a folder with accents and blanks, as every test that makes a company uses it; in memory where the
# machine lets them.
source "$(dirname "$0")/prepara.sh"
shift
PASTA=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo "$CONSTRUCAO")")
ln -sfn "$PASTA" "$WINEPREFIX/drive_c/$TEMPORARIA"
# One server for all the tests, which holds none of their output.
wineserver -p && wine cmd /c exit > /dev/null 2>&1
trap 'wineserver -k; rm -rf "$PASTA"' EXIT

# The libraries of the compiler, where it has them.
WINEPATH="$(dirname "$($TRIPLO-g++-posix -print-file-name=libstdc++-6.dll)");$(dirname "$($TRIPLO-gcc-posix -print-file-name=libwinpthread-1.dll)")"
export WINEPATH
ctest --test-dir "$CONSTRUCAO" --output-on-failure --timeout 600 -j 2 "$@"
