# Installs the BUILD, moves the copy to another folder, whose name has a space, and checks it there.
include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/installed")
set(PREFIX "${WORK}/moved to here")
file(RENAME "${WORK}/installed" "${PREFIX}")
include("${CMAKE_CURRENT_LIST_DIR}/check_prefix.cmake")
file(REMOVE_RECURSE "${WORK}")
