# How the code of this tree is compiled; hosts see nothing of it.

option(FENDA_WARNINGS_AS_ERRORS "Treat warnings as errors" OFF)
option(FENDA_SANITIZE "Build with address and undefined-behaviour sanitizers" OFF)

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>)
# g++ 12 sees an overlap in optimised `"literal" + std::string` that is not there.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)
endif()
if(FENDA_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()
if(FENDA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
