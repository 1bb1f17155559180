# The pages of the manual have no faults, and those that are put into a copy of it are all told:
#   cmake -DPYTHON= -DPICTURES= -DMANUAL= -DFOLDER= -P CheckManual.cmake
# PYTHON or PICTURES is empty where there is none.

set(copy ${FOLDER}/manual)
file(REMOVE_RECURSE ${FOLDER})
file(COPY ${MANUAL} DESTINATION ${FOLDER})

# expect(COMMAND word ... SAYS text ...): it complains with all these texts; without any, it has no complaint.
function(expect)
  cmake_parse_arguments(arg "" "" "COMMAND;SAYS" ${ARGN})
  list(GET arg_COMMAND 0 program)
  if(NOT program)
    return()
  endif()
  execute_process(COMMAND ${arg_COMMAND} RESULT_VARIABLE status ERROR_VARIABLE said OUTPUT_QUIET)
  if(NOT arg_SAYS AND NOT status EQUAL 0)
    message(FATAL_ERROR "${said}")
  endif()
  foreach(text IN LISTS arg_SAYS)
    string(FIND "${said}" "${text}" place)
    if(place LESS 0 OR NOT status EQUAL 1)
      message(FATAL_ERROR "\"${text}\" is not told, but (${status}): ${said}")
    endif()
  endforeach()
endfunction()

set(pages COMMAND "${PYTHON}" ${copy}/pages.py ${FOLDER}/html)
set(pictures COMMAND "${PICTURES}" comprobar ${copy})
expect(${pages})

file(APPEND ${copy}/copias.md "\n[Nada](nada.md) [Lejos](servidor.md#lejos)\n\n![](imagenes/copia.png)\n")
file(WRITE ${copy}/suelta.md "# Suelta\n")
file(APPEND ${copy}/escenas/copia.escena "# Otra cosa.\n")
file(WRITE ${copy}/escenas/nueva.escena "foto\npulsar cmdNada\n")
file(APPEND ${copy}/ejemplos/plan.csv "70500000;Servicios\r\n")
file(REMOVE ${copy}/imagenes/revisar.png)
file(RENAME ${copy}/imagenes/busqueda.png ${copy}/imagenes/otra.png)
expect(${pages} SAYS "copias.html: no existe nada.html" "copias.html: no hay ningún apartado servidor.html#lejos"
  "imagenes/copia.png no tiene texto alternativo" "copias.html: no existe imagenes/revisar.png"
  "otra.png: ninguna página lleva" "suelta.md: index.md no lleva a esta página")
expect(${pictures} SAYS "copia.escena: la escena ha cambiado" "nueva.escena: línea 2" "revisar.escena: falta la imagen"
  "busqueda.escena: falta la imagen" "importar-plan.escena: la pantalla ya no es la de la imagen"
  "otra.png: ninguna escena" "./dev manual")
