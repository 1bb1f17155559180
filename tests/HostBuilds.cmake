# Installs what a host needs from BUILD, and builds and runs a host against it in FOLDER. FLAGS, COMPILER and GENERATOR
# are those of the build.

cmake_policy(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGV}\n${output}")
  endif()
endfunction()

file(REMOVE_RECURSE ${FOLDER})
run(${CMAKE_COMMAND} --install ${BUILD} --component host --prefix ${FOLDER}/prefix)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/host -B ${FOLDER}/build -G ${GENERATOR}
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_PREFIX_PATH=${FOLDER}/prefix)
run(${CMAKE_COMMAND} --build ${FOLDER}/build)
run(${FOLDER}/build/host)
