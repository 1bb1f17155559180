# What a host builds against: each library as target FendaMaestros::NAME with the headers that a host needs and no more,
# in a tree that adds this one and as component NAME of the installed package.

if(FENDA_INSTALL)
  include(GNUInstallDirs)
  include(CMakePackageConfigHelpers)
  set(FENDA_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/FendaMaestros)
endif()

# fenda_offer(TARGET NAME HEADERS file ... [NEEDS need ...]): headers are given from the root of the tree and included in
# the same way. NEEDS: see Needs.cmake.
function(fenda_offer target name)
  cmake_parse_arguments(arg "" "" "HEADERS;NEEDS" ${ARGN})
  add_library(FendaMaestros::${name} ALIAS ${target})
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${arg_HEADERS})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  set_property(GLOBAL APPEND PROPERTY FENDA_PUBLIC_HEADERS ${arg_HEADERS})
  if(NOT FENDA_INSTALL)
    return()
  endif()

  install(TARGETS ${target} EXPORT FendaMaestros-${name} COMPONENT host
          ARCHIVE COMPONENT host
          FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fendamaestros COMPONENT host)
  install(EXPORT FendaMaestros-${name} NAMESPACE FendaMaestros:: DESTINATION ${FENDA_PACKAGE_DIR} COMPONENT host)
  set_property(DIRECTORY APPEND PROPERTY FENDA_COMPONENTS ${name})
  list(TRANSFORM arg_NEEDS REPLACE "(.+)" "\"\\1\"")
  list(JOIN arg_NEEDS " " needs)
  set_property(DIRECTORY APPEND_STRING PROPERTY FENDA_NEEDS "set(needs_of_${name} ${needs})\n")
endfunction()

# fenda_install_package(): to be called once every library is known.
function(fenda_install_package)
  if(NOT FENDA_INSTALL)
    return()
  endif()
  get_property(FENDA_COMPONENTS DIRECTORY PROPERTY FENDA_COMPONENTS)
  get_property(FENDA_NEEDS DIRECTORY PROPERTY FENDA_NEEDS)
  set(config ${PROJECT_BINARY_DIR}/FendaMaestrosConfig.cmake)
  configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/FendaMaestrosConfig.cmake.in ${config}
                                INSTALL_DESTINATION ${FENDA_PACKAGE_DIR})
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/FendaMaestrosConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES ${config} ${PROJECT_BINARY_DIR}/FendaMaestrosConfigVersion.cmake ${PROJECT_SOURCE_DIR}/cmake/Needs.cmake
          DESTINATION ${FENDA_PACKAGE_DIR} COMPONENT host)
endfunction()
