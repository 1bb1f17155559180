# Reads the includes of the core and fails when one reaches outside the standard library or up a floor:
#   cmake -DROOT=FOLDER -P CheckFloors.cmake
# Every offence is printed as file:line. The floors are those of floors.txt.

cmake_policy(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/ReadFloors.cmake)

set(standard_headers
    algorithm any array atomic barrier bit bitset charconv chrono codecvt compare complex concepts condition_variable
    coroutine deque exception execution filesystem format forward_list fstream functional future
    initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource
    mutex new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore set
    shared_mutex source_location span sstream stack stdexcept stop_token streambuf string string_view strstream
    syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray
    variant vector version
    cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal cstdarg cstddef cstdint cstdio
    cstdlib cstring ctime cuchar cwchar cwctype)

# offence(OUT FLOOR FILE NAME): why a file of FLOOR may not include NAME, given with its quotes; empty when it may.
function(offence out floor file name)
  set(${out} "" PARENT_SCOPE)
  if(name MATCHES "^<([^>]*)>$")
    if(NOT CMAKE_MATCH_1 IN_LIST standard_headers)
      set(${out} "is not a standard header" PARENT_SCOPE)
    endif()
    return()
  endif()
  if(NOT name MATCHES "^\"([a-z]+)/([A-Za-z0-9_/]+\\.h)\"$")
    set(${out} "is not written as \"floor/Header.h\"" PARENT_SCOPE)
    return()
  endif()
  set(target ${CMAKE_MATCH_1})
  set(path ${CMAKE_MATCH_1}/${CMAKE_MATCH_2})
  if(NOT EXISTS ${ROOT}/${path})
    set(${out} "does not exist" PARENT_SCOPE)
  elseif(NOT target IN_LIST FENDA_FLOORS)
    set(${out} "is outside the core" PARENT_SCOPE)
  elseif(NOT target STREQUAL floor AND NOT target IN_LIST FENDA_BELOW_${floor})
    set(${out} "is not below ${floor}" PARENT_SCOPE)
  endif()
endfunction()

# line_of(OUT TEXT PIECE): the line on which PIECE starts.
function(line_of out text piece)
  string(FIND "${text}" "${piece}" position)
  string(SUBSTRING "${text}" 0 ${position} before)
  string(REGEX REPLACE "[^\n]" "" newlines "${before}")
  string(LENGTH "${newlines}" count)
  math(EXPR count "${count} + 1")
  set(${out} ${count} PARENT_SCOPE)
endfunction()

set(offences 0)
set(read 0)
foreach(floor ${FENDA_FLOORS})
  file(GLOB_RECURSE files RELATIVE ${ROOT} ${ROOT}/${floor}/*)
  if(NOT files)
    message("${floor}: floors.txt lists a folder that is not there")
    math(EXPR offences "${offences} + 1")
  endif()
  foreach(file ${files})
    if(NOT file MATCHES "\\.(h|cpp)$")
      message("${file}: only .h and .cpp files belong to the core")
      math(EXPR offences "${offences} + 1")
      continue()
    endif()
    math(EXPR read "${read} + 1")
    file(READ ${ROOT}/${file} text)
    string(PREPEND text "\n")
    string(REGEX MATCHALL "\n[ \t]*#[ \t]*(include|include_next|import|embed)[ \t]*[^ \t\n;]+" directives "${text}")
    foreach(directive ${directives})
      string(REGEX REPLACE "^\n[ \t]*#[ \t]*[a-z_]+[ \t]*" "" name "${directive}")
      offence(reason ${floor} ${file} ${name})
      if(reason)
        line_of(line "${text}" "${directive}")
        message("${file}:${line}: ${name} ${reason}")
        math(EXPR offences "${offences} + 1")
      endif()
    endforeach()
  endforeach()
endforeach()

if(read EQUAL 0)
  message(FATAL_ERROR "no source of the core under ${ROOT}")
endif()
if(offences GREATER 0)
  message(FATAL_ERROR "${offences} faults break the floors")
endif()
message("${read} files keep the floors")
