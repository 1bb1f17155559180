# Programs of others on these libraries: installed, or as sources inside their tree; and the core on other compilers.

set(host_folder ${CMAKE_CURRENT_BINARY_DIR}/hosts)
set(host_compiler -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER})
if(FENDA_SANITIZE)
  list(APPEND host_compiler -DCMAKE_CXX_FLAGS=-fsanitize=address,undefined)
endif()

# fenda_host(NAME PROGRAM OPTION...): configures tests/host with these options, builds it and runs PROGRAM.
function(fenda_host name program)
  add_test(NAME host.${name}
    COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${CMAKE_CURRENT_SOURCE_DIR}/host ${host_folder}/${name}
            --build-generator ${CMAKE_GENERATOR} --build-noclean --build-options ${ARGN} --test-command ${program})
  set_tests_properties(host.${name} PROPERTIES PROCESSORS 2 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

if(TARGET fenda_sqlite AND FENDA_INSTALL)
  set(package ${host_compiler} -DFROM=package -DCMAKE_PREFIX_PATH=${host_folder}/prefix)
  set(without_qt -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON)
  add_test(NAME host.install
    COMMAND ${CMAKE_COMMAND} -DBUILD=${PROJECT_BINARY_DIR} -DPREFIX=${host_folder}/prefix "-DCOMPONENTS=host library windows"
            -P ${CMAKE_CURRENT_SOURCE_DIR}/Install.cmake)
  fenda_host(sqlite OwnDesktop ${package} ${without_qt} "-DCOMPONENTS=core sqlite")
  fenda_host(everything Operated ${package})
  add_test(NAME host.missing_components_are_named
    COMMAND ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_SOURCE_DIR}/host -B ${host_folder}/missing -G ${CMAKE_GENERATOR}
            ${package} ${without_qt} "-DCOMPONENTS=sqlite excel qt")
  set(told "Faltan componentes: excel (no está instalado), qt (no se encuentra Qt6).")
  if(NOT TARGET fenda_qt)
    set(told "Faltan componentes: excel (no está instalado), qt (no está instalado).")
  endif()
  string(REGEX REPLACE "([().])" "[\\1]" told "${told}")
  string(REPLACE " " "[ \n]+" told "${told}")
  set_tests_properties(host.missing_components_are_named PROPERTIES PASS_REGULAR_EXPRESSION "${told}")

  set_tests_properties(host.install PROPERTIES FIXTURES_SETUP installed)
  set_tests_properties(host.sqlite host.everything host.missing_components_are_named
    PROPERTIES FIXTURES_REQUIRED installed)
endif()

# As sources: with all that there is to find, and the core alone, compiled by another compiler where there is one.
add_test(NAME host.fetched
  COMMAND ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_SOURCE_DIR}/host -B ${host_folder}/fetched -G ${CMAKE_GENERATOR}
          ${host_compiler} -DFROM=fetch -DSOURCE=${PROJECT_SOURCE_DIR})
set(core_only -DFENDA_WITH_HEADLESS=OFF -DFENDA_WITH_POSTGRES=OFF -DFENDA_WITH_REPORTS=OFF -DFENDA_WITH_SQLITE=OFF -DFENDA_WITH_XLSX=OFF
    -DFENDA_WITH_QT=OFF)
find_program(FENDA_CLANG clang++)
set(other_compiler ${CMAKE_CXX_COMPILER})
if(FENDA_CLANG)
  set(other_compiler ${FENDA_CLANG})
else()
  message(STATUS "Pruebas: el núcleo no se compila con clang++ (no está instalado)")
endif()
fenda_host(subdirectory OwnDesktop
  -DCMAKE_CXX_COMPILER=${other_compiler} -DFROM=subdirectory -DSOURCE=${PROJECT_SOURCE_DIR} ${core_only})

# The core needs nothing of this system.
find_program(FENDA_MINGW NAMES x86_64-w64-mingw32-g++-posix x86_64-w64-mingw32-g++)
if(FENDA_MINGW)
  add_test(NAME core_compiles_for_windows
    COMMAND ${CMAKE_CTEST_COMMAND} --build-and-test ${PROJECT_SOURCE_DIR} ${host_folder}/windows
            --build-generator ${CMAKE_GENERATOR} --build-noclean --build-target fendamaestros
            --build-options -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_CXX_COMPILER=${FENDA_MINGW}
            -DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY -DFENDA_PROGRAM=OFF -DFENDA_TESTS=OFF -DFENDA_BENCHES=OFF
            ${core_only})
  set_tests_properties(core_compiles_for_windows PROPERTIES PROCESSORS 2 ENVIRONMENT "LDFLAGS=")
else()
  message(STATUS "Pruebas: el núcleo no se compila para Windows (no está instalado mingw-w64)")
endif()
