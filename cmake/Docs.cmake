# The reference of what a host includes, out of the comments in the headers: the target `docs`, in build/docs. A warning
# is an error.

get_property(headers GLOBAL PROPERTY FENDA_PUBLIC_HEADERS)
list(JOIN headers " " headers)
find_program(FENDA_DOXYGEN doxygen)
if(FENDA_DOXYGEN)
  add_custom_target(docs
    COMMAND ${CMAKE_COMMAND} -E make_directory build
    COMMAND ${CMAKE_COMMAND} -E env FENDA_VERSION=${PROJECT_VERSION} "FENDA_HEADERS=include/fenda.h include/fenda_contrato.h ${headers}"
            ${FENDA_DOXYGEN} docs/Doxyfile
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
endif()
