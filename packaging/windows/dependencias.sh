#!/bin/bash
# Builds for Windows what the programs are linked with, from the distribution's source packages:
#
#     dependencias.sh 64|32 PASTA [base|qt ...]      both parts, unless some are named
#
# base is SQLite, SQLiteCpp, the libraries of workbooks and of barcodes, GoogleTest and the headers of the JSON library:
# a minute or two, and all that the tests need. qt is Core, Gui, Widgets and PrintSupport: half an hour. What was built by the same
# compiler from the same versions and in the same way stays as it is.
set -euo pipefail

readonly BITS=$1 PASTA=$(mkdir -p "$2" && realpath "$2")
shift 2
readonly CADEIA=$(realpath "$(dirname "$0")/../../cmake/mingw.cmake") OBRA=$PASTA/obra SELOS=$PASTA/selos
case $BITS in
64) readonly TRIPLO=x86_64-w64-mingw32 ;;
32) readonly TRIPLO=i686-w64-mingw32 ;;
*) echo "uso: $0 64|32 PASTA [base|qt ...]" >&2 && exit 2 ;;
esac
mkdir -p "$OBRA" "$SELOS"

versao_da_fonte() { apt-cache showsrc --only-source "$1" 2> /dev/null | sed -n 's/^Version: //p' | sort -V | tail -1; }

# Source packages beside the packages that the machine is set up for, in a file of their own.
exige_fontes() {
    [ -z "$(versao_da_fonte qt6-base)" ] || return 0
    local onde=/etc/apt/sources.list.d
    if [ -f $onde/debian.sources ]; then
        sed 's/^Types:.*/Types: deb-src/' $onde/debian.sources > $onde/debian-src.sources
    else
        sed -n 's/^deb /deb-src /p' /etc/apt/sources.list > $onde/debian-src.list
    fi
    apt-get update -q
    [ -n "$(versao_da_fonte qt6-base)" ] || { echo "apt knows no source packages" >&2; exit 1; }
}

# The unpacked source of a package, as the current folder.
fonte() {
    rm -rf "${OBRA:?}/$1" && mkdir -p "$OBRA/$1" && cd "$OBRA/$1"
    apt-get source -q --only-source "$1=$2"
    cd "$OBRA/$1"/*/
}

licenca() { install -Dm 644 debian/copyright "$PASTA/licencas/$1.txt"; }

com_cmake() {
    local de=$1 em=$2
    shift 2
    rm -rf "$em"
    cmake -G Ninja -S "$de" -B "$em" -DCMAKE_TOOLCHAIN_FILE="$CADEIA" -DORVEX_BITS="$BITS" \
        -DORVEX_WINDOWS_DEPENDENCIAS="$PASTA" -DCMAKE_INSTALL_PREFIX="$PASTA" -DCMAKE_BUILD_TYPE=Release "$@"
    cmake --build "$em"
    cmake --install "$em"
}

constroi_sqlite3() {
    fonte sqlite3 "$1"
    licenca sqlite3
    ./configure --disable-tcl > /dev/null
    make -s sqlite3.c
    $TRIPLO-gcc-posix -O2 -DNDEBUG -DSQLITE_ENABLE_COLUMN_METADATA -DSQLITE_THREADSAFE=1 -c sqlite3.c
    mkdir -p "$PASTA/lib" "$PASTA/include"
    rm -f "$PASTA/lib/libsqlite3.a"
    $TRIPLO-ar rcs "$PASTA/lib/libsqlite3.a" sqlite3.o
    cp sqlite3.h sqlite3ext.h "$PASTA/include"
}

constroi_sqlitecpp() {
    fonte sqlitecpp "$1"
    licenca sqlitecpp
    com_cmake . construcao -DSQLITECPP_INTERNAL_SQLITE=OFF -DSQLITECPP_RUN_CPPLINT=OFF -DSQLITECPP_RUN_CPPCHECK=OFF \
        -DSQLITECPP_USE_STACK_PROTECTION=OFF
}

constroi_libxlsxwriter() {
    fonte libxlsxwriter "$1"
    licenca libxlsxwriter
    com_cmake . construcao -DBUILD_SHARED_LIBS=OFF
}

# The library alone, without pictures in PNG: there is no option against the program and the shared library.
constroi_zint() {
    fonte zint "$1"
    licenca zint
    cmake -G Ninja -S . -B construcao -DCMAKE_TOOLCHAIN_FILE="$CADEIA" -DORVEX_BITS="$BITS" \
        -DCMAKE_BUILD_TYPE=Release -DZINT_STATIC=ON -DZINT_USE_{PNG,QT}=OFF
    cmake --build construcao --target zint-static
    install -Dm 644 construcao/backend/libzint-static.a "$PASTA/lib/libzint.a"
    install -Dm 644 backend/zint.h "$PASTA/include/zint.h"
}

# The packages of these two are sources themselves.
constroi_googletest() {
    cd "$OBRA"
    com_cmake /usr/src/googletest googletest
}

constroi_nlohmann-json3-dev() {
    mkdir -p "$PASTA/include" "$PASTA/share/cmake"
    cp -r /usr/include/nlohmann "$PASTA/include"
    cp -r /usr/share/cmake/nlohmann_json "$PASTA/share/cmake"
    install -Dm 644 /usr/share/doc/nlohmann-json3-dev/copyright "$PASTA/licencas/nlohmann-json.txt"
}

constroi_qt6-base() {
    fonte qt6-base "$1"
    licenca qt6-base
    # Three places of what is Windows' own take for there what was left out.
    cd src/plugins/platforms/windows
    sed -i '/^static inline bool isSoftwareGl/,/^}/s/^#if QT_CONFIG(dynamicgl)/#if QT_CONFIG(opengl) \&\& QT_CONFIG(dynamicgl)/' \
        qwindowswindow.cpp
    sed -i 's/^#if QT_CONFIG(directwrite3)/#if QT_CONFIG(direct2d) \&\& QT_CONFIG(directwrite3)/' qwindowsintegration.cpp
    cd "$OLDPWD"
    sed -i 's/^#if QT_CONFIG(directwrite)/#if QT_CONFIG(direct2d) \&\& QT_CONFIG(directwrite)/' \
        src/printsupport/platform/windows/qprintengine_win.cpp
    com_cmake . construcao -DBUILD_SHARED_LIBS=ON -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
        -DFEATURE_{sql,network,dbus,opengl,vulkan,direct2d,testlib,xml,concurrent,pkg_config}=OFF \
        -DFEATURE_{tabletevent,icu,gif,jpeg}=OFF
}

# All that decides how a part is built. Comments do not: they would cost half an hour.
maneira() {
    declare -f "constroi_$1" com_cmake
    grep -v '^ *#' "$CADEIA"
}

# Of which version, and whether it is there already.
constroi() {
    local qual=$1 versao=$2 selo
    [ -n "$versao" ] || { echo "$qual: no such package" >&2; exit 1; }
    exec 9> "$SELOS/$qual.lock" # two at once would build in one folder
    flock 9
    selo="$qual $versao, $($TRIPLO-gcc-posix -dumpfullversion), $(maneira "$qual" | cksum)"
    [ "$(cat "$SELOS/$qual" 2> /dev/null)" != "$selo" ] || return 0
    echo "== $qual $versao for $BITS bits, in $PASTA"
    rm -f "$SELOS/$qual"
    ("constroi_$qual" "$versao")
    rm -rf "${OBRA:?}/$qual"
    echo "$selo" > "$SELOS/$qual"
}

instalada() { dpkg-query -W -f '${Version}' "$1"; }

exige_fontes
[ $# -gt 0 ] || set -- base qt
for parte; do
    case $parte in
    base)
        constroi sqlite3 "$(versao_da_fonte sqlite3)"
        constroi sqlitecpp "$(versao_da_fonte sqlitecpp)"
        constroi libxlsxwriter "$(versao_da_fonte libxlsxwriter)"
        constroi zint "$(versao_da_fonte zint)"
        constroi googletest "$(instalada googletest)"
        constroi nlohmann-json3-dev "$(instalada nlohmann-json3-dev)"
        ;;
    qt) constroi qt6-base "$(versao_da_fonte qt6-base)" ;;
    *) echo "unknown part: $parte" >&2 && exit 2 ;;
    esac
done
