# fenda_embed_data(TARGET NAMESPACE FILE...): CSV files of data/ inside a library, so that the installed program needs
# no data folder of its own. Defines `std::string_view NAMESPACE::referenceData(std::string_view name)`, which the
# library declares itself; a name without ".csv" that is not there gives "".
#
# As a script (cmake -P): writes OUTPUT from FILES.
if(CMAKE_SCRIPT_MODE_FILE)
  set(entries "")
  foreach(file ${FILES})
    get_filename_component(name ${file} NAME_WE)
    file(READ ${file} text)
    string(APPEND entries "    if (name == \"${name}\") return R\"csv(${text})csv\";\n")
  endforeach()
  file(WRITE ${OUTPUT} "#include <string_view>\n\nnamespace ${NAMESPACE} {\n\n"
    "std::string_view referenceData(std::string_view name);\n\n"
    "std::string_view referenceData(std::string_view name) {\n${entries}    return {};\n}\n\n}  // namespace\n")
  return()
endif()

function(fenda_embed_data target namespace)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/${target}_data.cpp)
  add_custom_command(OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DNAMESPACE=${namespace} -DOUTPUT=${output} "-DFILES=${ARGN}" -P ${PROJECT_SOURCE_DIR}/cmake/EmbedData.cmake
    DEPENDS ${ARGN} ${PROJECT_SOURCE_DIR}/cmake/EmbedData.cmake
    VERBATIM)
  target_sources(${target} PRIVATE ${output})
endfunction()
