# Feeds small trees to cmake/CheckFloors.cmake: it must accept a clean one and name the line of each fault in a bad one.

cmake_policy(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../cmake/ReadFloors.cmake)

# expect(VERDICT FILE INCLUDE): the verdict is "accepted" or the reason that must be printed.
function(expect verdict file include)
  file(REMOVE_RECURSE ${TREE})
  foreach(folder ${FENDA_FLOORS} platform/qt)
    file(WRITE ${TREE}/${folder}/Present.h "#pragma once\n#include <string>\n")
  endforeach()
  file(APPEND ${TREE}/${file} "#pragma once\n// brackets [ and ; must not hide what follows\n  #  include ${include}\n")

  execute_process(COMMAND ${CMAKE_COMMAND} -DROOT=${TREE} -P ${CMAKE_CURRENT_LIST_DIR}/../cmake/CheckFloors.cmake
                  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(verdict STREQUAL "accepted")
    if(NOT status EQUAL 0)
      message(SEND_ERROR "${file} may include ${include}, but: ${output}")
    endif()
    return()
  endif()
  string(FIND "${output}" "${file}:3: ${include} ${verdict}" found)
  if(status EQUAL 0 OR found EQUAL -1)
    message(SEND_ERROR "${file} includes ${include}: expected \"${verdict}\", got ${status}: ${output}")
  endif()
endfunction()

expect("accepted" session/New.h "<vector>")
expect("accepted" session/New.h "\"session/Present.h\"")
expect("accepted" session/New.h "\"toolkit/Present.h\"")
expect("accepted" chart/New.cpp "\"taxid/Present.h\"")
expect("accepted" component/New.cpp "\"chart/Present.h\"")

expect("is not a standard header" toolkit/New.cpp "<sqlite3.h>")
expect("is not a standard header" toolkit/New.cpp "<unistd.h>")
expect("is not a standard header" ui/New.h "<QtWidgets/QWidget>")
expect("is not written as" ui/New.h "\"Present.h\"")
expect("is not written as" ui/New.h "\"../platform/qt/Present.h\"")
expect("is not written as" ui/New.h "SOME_MACRO")
expect("is outside the core" ui/New.cpp "\"platform/qt/Present.h\"")
expect("does not exist" ui/New.cpp "\"toolkit/Gone.h\"")
expect("is not below toolkit" toolkit/New.h "\"session/Present.h\"")
expect("is not below ui" ui/New.h "\"taxid/Present.h\"")
expect("is not below ui" ui/New.h "\"storage/Present.h\"")
expect("is not below codetables" codetables/New.cpp "\"taxid/Present.h\"")
expect("is not below taxid" taxid/New.cpp "\"codetables/Present.h\"")
expect("is not below taxid" taxid/New.cpp "\"chart/Present.h\"")
expect("is not below chart" chart/New.cpp "\"component/Present.h\"")

# A folder of the list that has gone is told.
file(REMOVE_RECURSE ${TREE}/taxid)
execute_process(COMMAND ${CMAKE_COMMAND} -DROOT=${TREE} -P ${CMAKE_CURRENT_LIST_DIR}/../cmake/CheckFloors.cmake
                RESULT_VARIABLE status ERROR_VARIABLE output)
if(status EQUAL 0 OR NOT output MATCHES "taxid: floors.txt lists a folder that is not there")
  message(SEND_ERROR "without taxid: ${status}: ${output}")
endif()
