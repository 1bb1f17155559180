# Installs components of a build into a prefix (cmake -P): BUILD, PREFIX, and COMPONENTS parted by blanks.
separate_arguments(COMPONENTS)
foreach(component IN LISTS COMPONENTS)
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --component ${component} --prefix ${PREFIX}
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()
