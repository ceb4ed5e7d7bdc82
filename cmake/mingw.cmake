# Windows, cross-compiled by the mingw-w64 of the distribution. ORVEX_BITS is the word size of the programs (64, 32), and
# ORVEX_WINDOWS_DEPENDENCIAS the folder that packaging/windows/dependencias.sh has built the libraries into.
set(ORVEX_BITS 64 CACHE STRING "Word size of the programs: 64 or 32")
set(ORVEX_WINDOWS_DEPENDENCIAS "" CACHE PATH "Folder of the libraries built for Windows")
# What is tried while configuring is compiled for the same.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ORVEX_BITS ORVEX_WINDOWS_DEPENDENCIAS)

if(NOT ORVEX_WINDOWS_DEPENDENCIAS)
  set(pasta "$ENV{ORVEX_WINDOWS_DEPENDENCIAS}")
  if(NOT pasta AND NOT "$ENV{XDG_CACHE_HOME}" STREQUAL "")
    set(pasta "$ENV{XDG_CACHE_HOME}/orvex-windows/${ORVEX_BITS}")
  elseif(NOT pasta)
    set(pasta "$ENV{HOME}/.cache/orvex-windows/${ORVEX_BITS}")
  endif()
  set(ORVEX_WINDOWS_DEPENDENCIAS "${pasta}" CACHE PATH "Folder of the libraries built for Windows" FORCE)
endif()

set(CMAKE_SYSTEM_NAME Windows)
if(ORVEX_BITS EQUAL 64)
  set(CMAKE_SYSTEM_PROCESSOR x86_64)
elseif(ORVEX_BITS EQUAL 32)
  set(CMAKE_SYSTEM_PROCESSOR i686)
else()
  message(FATAL_ERROR "ORVEX_BITS is 64 or 32, not ${ORVEX_BITS}")
endif()
set(ORVEX_MINGW ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
# The half with the standard threads.
set(CMAKE_C_COMPILER ${ORVEX_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ORVEX_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${ORVEX_MINGW}-windres)

# Programs are the building machine's, everything else Windows'.
set(CMAKE_FIND_ROOT_PATH ${ORVEX_WINDOWS_DEPENDENCIAS} /usr/${ORVEX_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ZLIB_USE_STATIC_LIBS ON)

# Qt's generators run here: they are those of the machine's own Qt, of the same version.
set(QT_HOST_PATH /usr CACHE PATH "Qt of the building machine")
file(GLOB ferramentas_qt LIST_DIRECTORIES true /usr/lib/*/cmake/Qt6CoreTools)
if(ferramentas_qt)
  list(GET ferramentas_qt 0 ferramentas_qt)
  cmake_path(GET ferramentas_qt PARENT_PATH ferramentas_qt)
  set(QT_HOST_PATH_CMAKE_DIR ${ferramentas_qt} CACHE PATH "CMake files of the building machine's Qt")
endif()
