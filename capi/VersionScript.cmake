# Writes the version script of the shared library (cmake -P):
#   NM         the program that lists symbols
#   OFFERED    a file with the objects and archives that the library is made of, a line each
#   USERS      the same for the objects that are linked apart and use classes of the library
#   PUBLIC     the version of what hosts call: every fenda_*
#   PRIVATE    the version of what those objects need, which is all that they find
#   OUTPUT     the script
cmake_policy(VERSION 3.25)

# symbols(OUT OPTION LIST): names in the files of a list, each once. There are many thousands, so no loop gathers them.
function(symbols out option list)
  execute_process(COMMAND ${NM} ${option} --extern-only --format=posix @${list}
    OUTPUT_VARIABLE names RESULT_VARIABLE failed ERROR_QUIET)
  if(failed)
    message(FATAL_ERROR "${NM} cannot read the files of ${list}")
  endif()
  # "name T 0 0"; lines that end in ":" are those of files.
  string(REGEX REPLACE "[^\n]*:\n" "" names "${names}")
  string(REGEX REPLACE " [^\n]*\n" ";" names "${names}")
  string(REPLACE "\n" "" names "${names}")
  list(REMOVE_DUPLICATES names)
  set(${out} "${names}" PARENT_SCOPE)
endfunction()

file(STRINGS ${USERS} users)
set(private "")
if(users)
  symbols(offered --defined-only ${OFFERED})
  symbols(own --defined-only ${USERS})
  symbols(wanted --undefined-only ${USERS})
  foreach(name IN LISTS offered)
    set(offers_${name} TRUE)
  endforeach()
  foreach(name IN LISTS own)
    unset(offers_${name})
  endforeach()
  foreach(name IN LISTS wanted)
    if(offers_${name})
      list(APPEND private ${name})
    endif()
  endforeach()
  list(SORT private)
  if(NOT private)
    message(FATAL_ERROR "what is linked apart needs nothing of the library")
  endif()
endif()

set(script "${PUBLIC} {\n  global:\n    fenda_*;\n  local:\n    *;\n};\n")
if(private)
  list(JOIN private ";\n    " names)
  string(APPEND script "${PRIVATE} {\n  global:\n    ${names};\n};\n")
endif()
file(WRITE ${OUTPUT} "${script}")
