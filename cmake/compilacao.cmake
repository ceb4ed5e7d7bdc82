# What makes compiling short: a compiler cache where the machine has one, and headers that are read once.
# Neither changes what is built; CMAKE_DISABLE_PRECOMPILE_HEADERS=ON builds without the second.

# Read precompiled, a header of the system is no longer one to GCC's optimiser, which then warns of the library's own
# code. So the builds that are optimised read them as they are, and their warnings stay errors too.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()

# The cache takes each checkout for the same place, so that what one compiled serves the others, and is told that the
# precompiled headers hold nothing of what it cannot see in them (macros of the source, the time of day). A launcher
# somebody chose stays, but for the bare cache, which would not touch a source with a precompiled header.
find_program(ORVEX_CCACHE ccache)
mark_as_advanced(ORVEX_CCACHE)
if(ORVEX_CCACHE AND (NOT CMAKE_CXX_COMPILER_LAUNCHER OR CMAKE_CXX_COMPILER_LAUNCHER MATCHES "(^|/)ccache$"))
  foreach(lingua C CXX)
    set(CMAKE_${lingua}_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${ORVEX_CCACHE})
  endforeach()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
  endif()
endif()

# The headers come read from another target's. They are those of the system and of libraries alone: a header of the
# project there would have everything compiled again with each of its changes.
function(orvex_cabecalhos_de outro)
  foreach(alvo IN LISTS ARGN)
    target_precompile_headers(${alvo} REUSE_FROM ${outro})
  endforeach()
endfunction()
