# Links OBJECTS with the LIBRARIES to PROGRAM, by COMPILER with FLAGS, and runs it (run_port_check.cmake).
separate_arguments(FLAGS UNIX_COMMAND "${FLAGS}")
string(REPLACE "|" ";" objects "${OBJECTS}")
string(REPLACE "|" ";" libraries "${LIBRARIES}")
set(folders "")
foreach(library IN LISTS libraries)
    cmake_path(GET library PARENT_PATH folder)
    list(APPEND folders "-Wl,-rpath,${folder}")
endforeach()
execute_process(COMMAND "${COMPILER}" ${FLAGS} ${objects} ${libraries} ${folders} -o "${PROGRAM}"
    COMMAND_ERROR_IS_FATAL ANY)
include("${CMAKE_CURRENT_LIST_DIR}/run_port_check.cmake")
