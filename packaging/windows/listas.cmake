# The lists that the installer works by, of a folder as it is to be installed: what it takes away, which is what it brought
# and nothing else, and what must not be in use.
#
#     cmake -D PASTA=... -D LISTAS=FILE -P listas.cmake
cmake_policy(VERSION 3.25)
file(GLOB_RECURSE ficheiros RELATIVE "${PASTA}" "${PASTA}/*")
set(apaga)
set(verifica)
set(pastas)
foreach(ficheiro IN LISTS ficheiros)
  cmake_path(GET ficheiro PARENT_PATH pasta)
  while(NOT pasta STREQUAL "")
    list(APPEND pastas "${pasta}")
    cmake_path(GET pasta PARENT_PATH pasta)
  endwhile()
  string(APPEND apaga "  Delete \"$INSTDIR\\${ficheiro}\"\n")
  if(ficheiro MATCHES "\\.(exe|com|dll)$")
    string(APPEND verifica "  !insertmacro VerificaPrograma \"${ficheiro}\"\n")
  endif()
endforeach()
list(REMOVE_DUPLICATES pastas)
list(SORT pastas ORDER DESCENDING) # what is inside first
foreach(pasta IN LISTS pastas)
  string(APPEND apaga "  RMDir \"$INSTDIR\\${pasta}\"\n")
endforeach()
string(REPLACE "/" "\\" apaga "${apaga}")
string(REPLACE "/" "\\" verifica "${verifica}")
file(WRITE "${LISTAS}" "!macro ApagaFicheiros\n${apaga}!macroend\n!macro VerificaProgramas\n${verifica}!macroend\n")
