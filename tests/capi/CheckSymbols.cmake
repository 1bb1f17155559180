# Compares what the shared library exports and fenda.h declares with the list of what hosts rely on (cmake -P):
#   NM, LIBRARY, HEADER, KNOWN  the program, both files and the list
# A difference is a change of the interface. The list says which version it is of, so that no change passes without a
# look at the version:
# - something new raises FENDA_INTERFACE_MINOR
# - something that goes or changes raises FENDA_INTERFACE_MAJOR, and with it the name of the library
# With REGENERATE, writes the list: only for a version that has been raised.
cmake_policy(VERSION 3.25)

# --- What the header says: a line for each declaration, without comments

file(READ ${HEADER} text)
string(REGEX REPLACE "//[^\n]*" "" text "${text}")
string(REGEX REPLACE "#if[^\n]*|#endif[^\n]*|#else[^\n]*|#include[^\n]*|#define FENDA_(API|H)[^\n]*|extern \"C\" {" "" text "${text}")
string(REGEX MATCHALL "#define FENDA_INTERFACE_(MAJOR|MINOR) [0-9]+" version "${text}")
string(REGEX REPLACE "[^0-9;]" "" version "${version}")
string(REPLACE ";" "." version "${version}")
string(REGEX REPLACE "#define FENDA_INTERFACE[^\n]*" "" text "${text}")
string(REGEX REPLACE "(#define [^\n]*)" "\\1;" text "${text}")
string(REGEX REPLACE "[ \n\t]+" " " text "${text}")
# A semicolon inside braces ends no declaration.
while(text MATCHES "{[^{}]*;[^{}]*}")
  string(REPLACE ";" "," inner "${CMAKE_MATCH_0}")
  string(REPLACE "${CMAKE_MATCH_0}" "${inner}" text "${text}")
endwhile()
set(declared "")
foreach(declaration IN LISTS text)
  string(STRIP "${declaration}" declaration)
  string(REGEX REPLACE "^FENDA_API " "" declaration "${declaration}")
  if(declaration MATCHES "[a-z]")
    list(APPEND declared "${declaration}")
  endif()
endforeach()

# --- What the library exports for hosts

execute_process(COMMAND ${NM} -D --defined-only --with-symbol-versions ${LIBRARY} OUTPUT_VARIABLE listed COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${listed}")
set(exported "")
foreach(line IN LISTS lines)
  if(line MATCHES " [A-Z] ([^@]+)@@?(FENDA_[0-9]+)$")
    if(NOT CMAKE_MATCH_1 STREQUAL CMAKE_MATCH_2)
      list(APPEND exported "${CMAKE_MATCH_2} ${CMAKE_MATCH_1}")
    endif()
  # Some linkers list the versions themselves.
  elseif(NOT line MATCHES "FENDA_PRIVATE_| A FENDA_[0-9]+$")
    list(APPEND exported "${line}")
  endif()
endforeach()
list(SORT exported)

set(now "interface ${version}" ${exported} ${declared})
list(JOIN now "\n" now_text)
if(REGENERATE)
  file(STRINGS ${KNOWN} known ENCODING UTF-8)
  list(POP_FRONT known known_version)
  list(REMOVE_ITEM known ${now})
  string(REGEX REPLACE "[.].*" "" known_major "${known_version}")
  if(known AND "interface ${version}" MATCHES "^${known_major}[.]")
    list(JOIN known "\n  " gone)
    message(FATAL_ERROR "Hosts of the same FENDA_INTERFACE_MAJOR rely on what is gone or changed:\n  ${gone}")
  endif()
  file(WRITE ${KNOWN} "${now_text}\n")
  return()
endif()

# --- The comparison

file(STRINGS ${KNOWN} known ENCODING UTF-8)
list(GET known 0 known_version)
if(NOT known_version STREQUAL "interface ${version}")
  message(FATAL_ERROR "capi/symbols.txt is of ${known_version} and fenda.h of ${version}: write the list anew.")
endif()
set(gone ${known})
list(REMOVE_ITEM gone ${now})
set(added ${now})
list(REMOVE_ITEM added ${known})
set(faults "")
foreach(each IN LISTS gone)
  string(APPEND faults "  gone or changed: ${each}\n")
endforeach()
foreach(each IN LISTS added)
  string(APPEND faults "  new or changed:  ${each}\n")
endforeach()
if(gone)
  string(APPEND faults "Hosts that were built before break: raise FENDA_INTERFACE_MAJOR, or put it back.\n")
elseif(added)
  string(APPEND faults "Older libraries lack it: raise FENDA_INTERFACE_MINOR.\n")
endif()
if(faults)
  message(FATAL_ERROR "The interface ${version} is no longer what hosts know:\n${faults}")
endif()
list(LENGTH exported count)
message("${count} functions, interface ${version}")
