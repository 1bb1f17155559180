# Reads floors.txt. FENDA_FLOORS: every folder of the core from the bottom up; FENDA_BELOW_<folder>: those that a folder
# may include besides itself.

set(FENDA_FLOORS_FILE ${CMAKE_CURRENT_LIST_DIR}/floors.txt)
file(STRINGS ${FENDA_FLOORS_FILE} lines REGEX "^[^#]")
set(FENDA_FLOORS "")
foreach(line IN LISTS lines)
  separate_arguments(folders UNIX_COMMAND "${line}")
  foreach(folder IN LISTS folders)
    set(FENDA_BELOW_${folder} ${FENDA_FLOORS})
  endforeach()
  list(APPEND FENDA_FLOORS ${folders})
endforeach()
