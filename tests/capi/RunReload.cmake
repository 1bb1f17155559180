# Loads and unloads the library a thousand times (cmake -P): PROGRAM does it, MAKER makes a company in FOLDER, LIBRARY.
file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${MAKER} ${FOLDER} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${PROGRAM} ${LIBRARY} ${FOLDER} 1000 RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} ended with ${status}")
endif()
