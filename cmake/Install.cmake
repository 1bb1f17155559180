# What a host builds against: the libraries, the headers that it needs and no more, and a package that
# find_package(FendaMaestros) finds. Each library is a target FendaMaestros::NAME.

include(CMakePackageConfigHelpers)
set(FENDA_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/FendaMaestros)

# fenda_install(TARGET NAME HEADER...): headers are given from the root of the tree and included in the same way.
function(fenda_install target name)
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${ARGN})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  install(TARGETS ${target} EXPORT FendaMaestros COMPONENT host
          ARCHIVE COMPONENT host
          FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fendamaestros COMPONENT host)
endfunction()

# fenda_install_package(): to be called once every library is known.
function(fenda_install_package)
  get_property(FENDA_DEPENDENCIES GLOBAL PROPERTY FENDA_DEPENDENCIES)
  set(config ${PROJECT_BINARY_DIR}/FendaMaestrosConfig.cmake)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/FendaMaestrosConfig.cmake.in ${config}
                                INSTALL_DESTINATION ${FENDA_PACKAGE_DIR})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/FendaMaestrosConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES ${config} ${PROJECT_BINARY_DIR}/FendaMaestrosConfigVersion.cmake
          DESTINATION ${FENDA_PACKAGE_DIR} COMPONENT host)
  install(EXPORT FendaMaestros NAMESPACE FendaMaestros:: DESTINATION ${FENDA_PACKAGE_DIR} COMPONENT host)
endfunction()
