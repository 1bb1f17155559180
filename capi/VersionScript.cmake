# Writes the version script of the shared library (cmake -P):
#   NM         the program that lists symbols
#   USERS      a file with the objects, a line each, that are linked apart and use classes of the library
#   LIBRARIES  the archives that the library is made of
#   PUBLIC     the version of what hosts call: every fenda_*
#   PRIVATE    the version of what those objects need, which is all that they find
#   OUTPUT     the script
cmake_policy(VERSION 3.25)

# symbols(OUT OPTION FILE...): names, each once.
function(symbols out option)
  execute_process(COMMAND ${NM} ${option} --format=posix ${ARGN} OUTPUT_VARIABLE listed RESULT_VARIABLE failed ERROR_QUIET)
  if(failed)
    message(FATAL_ERROR "${NM} cannot read ${ARGN}")
  endif()
  string(REGEX MATCHALL "[^\n]+\n" lines "${listed}")
  set(names "")
  foreach(line IN LISTS lines)
    # "name T 0 0"; lines that end in ":" are those of files.
    if(line MATCHES "^([A-Za-z0-9_.$]+) [A-Za-z]")
      list(APPEND names ${CMAKE_MATCH_1})
    endif()
  endforeach()
  list(REMOVE_DUPLICATES names)
  set(${out} "${names}" PARENT_SCOPE)
endfunction()

file(STRINGS ${USERS} users)
set(private "")
if(users)
  symbols(offered --defined-only ${LIBRARIES})
  symbols(own --defined-only ${users})
  symbols(wanted --undefined-only ${users})
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
    message(FATAL_ERROR "the windows need nothing of the library")
  endif()
endif()

set(script "${PUBLIC} {\n  global:\n    fenda_*;\n  local:\n    *;\n};\n")
if(private)
  list(JOIN private ";\n    " names)
  string(APPEND script "${PRIVATE} {\n  global:\n    ${names};\n};\n")
endif()
file(WRITE ${OUTPUT} "${script}")
