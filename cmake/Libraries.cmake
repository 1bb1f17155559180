# The core as one library, and one for each adapter that the machine has the libraries for.

include(cmake/Needs.cmake)
include(cmake/ReadFloors.cmake)

# fenda_core(HEADERS file...): the folders of floors.txt as the library `fendamaestros`.
function(fenda_core)
  cmake_parse_arguments(arg "" "" "HEADERS" ${ARGN})
  set(sources "")
  foreach(folder IN LISTS FENDA_FLOORS)
    file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND sources ${found})
  endforeach()
  add_library(fendamaestros STATIC ${sources})
  fenda_offer(fendamaestros core HEADERS ${arg_HEADERS})
endfunction()

# fenda_adapter(NAME [NEEDS need ...] [LINK target ...] [HEADERS file ...]): platform/NAME as library fenda_NAME. Option
# FENDA_WITH_<NAME> defaults to on; a need (see Needs.cmake) that is not found turns the adapter off with one line.
# HEADERS: those that a host needs.
function(fenda_adapter name)
  cmake_parse_arguments(arg "" "" "NEEDS;LINK;HEADERS" ${ARGN})
  string(TOUPPER ${name} upper)
  option(FENDA_WITH_${upper} "Build the adapter platform/${name}" ON)
  if(NOT FENDA_WITH_${upper})
    message(STATUS "Adaptador ${name}: no se construye (desactivado)")
    return()
  endif()
  fenda_find(missing ${arg_NEEDS})
  if(missing)
    list(JOIN missing ", " missing)
    message(STATUS "Adaptador ${name}: no se construye (falta ${missing})")
    return()
  endif()

  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/platform/${name}/*.cpp)
  add_library(fenda_${name} STATIC ${sources})
  target_link_libraries(fenda_${name} PUBLIC fendamaestros PRIVATE ${arg_LINK})
  target_compile_definitions(fenda_${name} INTERFACE FENDA_WITH_${upper})
  list(TRANSFORM arg_HEADERS PREPEND platform/${name}/)
  fenda_offer(fenda_${name} ${name} HEADERS ${arg_HEADERS} NEEDS ${arg_NEEDS})
  set_property(DIRECTORY APPEND PROPERTY FENDA_ADAPTERS ${name})
  message(STATUS "Adaptador ${name}: se construye")
endfunction()

# fenda_missing_adapters(OUT NAME...): those of these adapters that were not built, as a text; empty when all are there.
function(fenda_missing_adapters out)
  set(missing "")
  foreach(adapter IN LISTS ARGN)
    if(NOT TARGET fenda_${adapter})
      list(APPEND missing ${adapter})
    endif()
  endforeach()
  list(JOIN missing ", " missing)
  set(${out} "${missing}" PARENT_SCOPE)
endfunction()
