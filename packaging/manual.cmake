# A page of the manual as HTML, for who has no reader of Markdown:
#
#     cmake -D CMARK=cmark-gfm -D PAGINA=page.md -D HTML=page.html -D DOCUMENTOS=FOLDER -P manual.cmake
#
# The pages name one another as HTML, and the other documents in the folder where they are installed.
cmake_policy(VERSION 3.25)
execute_process(COMMAND ${CMARK} -e table "${PAGINA}" OUTPUT_VARIABLE corpo COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "href=\"([a-z-]+)\\.md" "href=\"\\1.html" corpo "${corpo}")
string(REPLACE "href=\"../" "href=\"${DOCUMENTOS}/" corpo "${corpo}")
# What links point at.
string(REGEX MATCHALL "<h2>[^<]*</h2>" titulos "${corpo}")
foreach(titulo IN LISTS titulos)
  string(REGEX REPLACE "</?h2>" "" texto "${titulo}")
  string(TOLOWER "${texto}" ancora)
  string(REGEX REPLACE "[,:«»]" "" ancora "${ancora}")
  string(REPLACE " " "-" ancora "${ancora}")
  string(REPLACE "${titulo}" "<h2 id=\"${ancora}\">${texto}</h2>" corpo "${corpo}")
endforeach()
string(REGEX MATCH "<h1>([^<]*)</h1>" titulo "${corpo}")
file(WRITE "${HTML}" "<!DOCTYPE html>
<html lang=\"pt\"><meta charset=\"utf-8\"><title>${CMAKE_MATCH_1}</title>
<style>
body { font: 16px/1.5 sans-serif; color: #1a1f2b; max-width: 60em; margin: 2em auto; padding: 0 1em }
h1, h2 { color: #2c467a } a { color: #2c467a }
table { border-collapse: collapse } th, td { border: 1px solid #c3cde2; padding: .3em .6em; text-align: left; vertical-align: top }
th { background: #d5def2 } img { max-width: 100%; border: 1px solid #c3cde2 }
</style>
<p><a href=\"index.html\">Manual da ORVEX</a></p>
${corpo}</html>
")
