# Runs a script in a fresh folder and compares what it prints, its exit status and its complaint with the .salida file
# beside it. The date of today reads <hoy>.
#
#   cmake -DFENDA=program -DSCRIPT=x.guion -DFOLDER=fresh/folder [-DOPTIONS=--ventana] [-DREGENERATE=ON] -P comparar.cmake
#
# REGENERATE writes the .salida anew instead; `cmake --build build --target golden` does so for every script. Read the
# difference before you commit it.

get_filename_component(name ${SCRIPT} NAME)
string(REGEX REPLACE "[.]guion$" ".salida" golden ${SCRIPT})
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

if(REGENERATE)
  file(WRITE ${golden} "${found}")
  return()
endif()

set(expected "")
if(EXISTS ${golden})
  file(READ ${golden} expected)
endif()
if(found STREQUAL expected)
  return()
endif()
file(WRITE ${FOLDER}/salida "${found}")
execute_process(COMMAND diff -u ${golden} ${FOLDER}/salida)
message(FATAL_ERROR "${name} no da lo que se esperaba. ${complaint}")
