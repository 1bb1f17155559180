# Runs a script in a fresh folder and compares what it prints, its exit status and its complaint with the .salida file
# beside it. The date of today reads <hoy>, the file that holds a copy of what was deleted <copia>.
#
#   cmake -DFENDA=program -DSCRIPT=x.guion -DFOLDER=fresh/folder [-DGOLDEN=x.salida] [-DOPTIONS=--ventana]
#         [-DPDF=file "-DLINES=text|text"] [-DREGENERATE=ON] -P comparar.cmake
#
# PDF: a file that the script leaves behind, in whose text these lines come in this order (where pdftotext is at hand).
# REGENERATE writes the .salida anew instead; `./dev golden` does so for every script. Read the
# difference before you commit it.

get_filename_component(name ${SCRIPT} NAME)
if(NOT GOLDEN)
  string(REGEX REPLACE "[.]guion$" ".salida" GOLDEN ${SCRIPT})
endif()
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})

set(ENV{QT_QPA_PLATFORM} offscreen)
unset(ENV{FENDA_CARPETA})
execute_process(
  COMMAND ${FENDA} guion ${OPTIONS} ${SCRIPT}
  WORKING_DIRECTORY ${FOLDER}
  OUTPUT_VARIABLE found
  ERROR_VARIABLE complaint
  RESULT_VARIABLE status)
string(APPEND found "estado ${status}\n")
if(NOT status EQUAL 0)
  string(APPEND found "${complaint}")
endif()
string(REPLACE "${SCRIPT}" "${name}" found "${found}")
string(TIMESTAMP today "%d/%m/%Y")
string(REPLACE "${today}" "<hoy>" found "${found}")
string(REGEX REPLACE "Copia en [^\n]*[.]csv" "Copia en <copia>" found "${found}")

if(REGENERATE)
  file(WRITE ${GOLDEN} "${found}")
  return()
endif()

set(expected "")
if(EXISTS ${GOLDEN})
  file(READ ${GOLDEN} expected)
endif()
if(NOT found STREQUAL expected)
  file(WRITE ${FOLDER}/salida "${found}")
  execute_process(COMMAND diff -u ${GOLDEN} ${FOLDER}/salida)
  message(FATAL_ERROR "${name} no da lo que se esperaba. ${complaint}")
endif()

find_program(PDFTOTEXT pdftotext)
if(NOT PDF OR NOT PDFTOTEXT)
  return()
endif()
execute_process(COMMAND ${PDFTOTEXT} -layout ${FOLDER}/${PDF} - OUTPUT_VARIABLE text)
string(REPLACE "|" ";" LINES "${LINES}")
foreach(line ${LINES})
  string(FIND "${text}" "${line}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "${PDF}: falta \"${line}\", o no está en su orden")
  endif()
  string(SUBSTRING "${text}" ${at} -1 text)
endforeach()
