# Runs an example host in a folder of its own and looks at what it prints (cmake -P): PROGRAM, FOLDER.
file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${PROGRAM} ${FOLDER} OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
set(expected "1 12345678Z\n43000012 Embalajes Tresveredas S.A.\n")
if(NOT status EQUAL 0 OR NOT out STREQUAL expected)
  message(FATAL_ERROR "${PROGRAM} ended with ${status} and printed:\n${out}${err}")
endif()
