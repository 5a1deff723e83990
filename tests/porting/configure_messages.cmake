# Configures a product build with what a port gets wrong, and expects a message that names it.
#     cmake -D SOURCE=… -D BINARY=… -D GENERATOR=… -D MAKE_PROGRAM=… -D COMPILER=… -P configure_messages.cmake
set(strict "${SOURCE}/tests/porting/strict/platform")

# Runs CMake with the options, and compares its result and its output with what is expected of them.
function(expect_configure result message)
    execute_process(
        COMMAND "${CMAKE_COMMAND}" -S "${SOURCE}" -B "${BINARY}/build" -G "${GENERATOR}"
            "-DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}" "-DCMAKE_CXX_COMPILER=${COMPILER}"
            -UORVEL_PLATFORM_INCLUDE_DIRS -UORVEL_PLATFORM_LIBRARIES -UORVEL_PLATFORM_TARGET ${ARGN}
        WORKING_DIRECTORY "${SOURCE}"
        RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    string(REGEX REPLACE "[ \n]+" " " output "${output}")
    string(FIND "${output}" "${message}" position)
    if(status EQUAL 0)
        set(found succeeds)
    else()
        set(found fails)
    endif()
    if(position EQUAL -1 OR NOT found STREQUAL result)
        message(SEND_ERROR "cmake ${ARGN}: expected that it ${result} and says \"${message}\", found: ${output}")
    endif()
endfunction()

file(REMOVE_RECURSE "${BINARY}")
file(MAKE_DIRECTORY "${BINARY}")

expect_configure(fails "ORVEL_PLATFORM_DIR names a folder that does not exist: \"/nowhere/at/all\""
    -DORVEL_PLATFORM_DIR=/nowhere/at/all)
expect_configure(fails "ORVEL_PLATFORM_DIR is \"port\", which is not an absolute path" -DORVEL_PLATFORM_DIR:STRING=port)
foreach(missing IN ITEMS host.h spatial_reference.h foundation.h win32.h)
    file(COPY "${strict}/" DESTINATION "${BINARY}/without")
    file(REMOVE "${BINARY}/without/${missing}")
    expect_configure(fails "ORVEL_PLATFORM_DIR has no ${missing}: \"${BINARY}/without\""
        "-DORVEL_PLATFORM_DIR=${BINARY}/without")
endforeach()
expect_configure(fails "ORVEL_PLATFORM_INCLUDE_DIRS names a folder that does not exist: \"/nowhere\""
    "-DORVEL_PLATFORM_DIR=${strict}" -DORVEL_PLATFORM_INCLUDE_DIRS=/nowhere)
expect_configure(fails "ORVEL_PLATFORM_LIBRARIES names a library that does not exist: \"/nowhere/host.so\""
    "-DORVEL_PLATFORM_DIR=${strict}" -DORVEL_PLATFORM_LIBRARIES=/nowhere/host.so)
expect_configure(fails "ORVEL_PLATFORM_TARGET names a target that does not exist: \"sdk\""
    "-DORVEL_PLATFORM_DIR=${strict}" -DORVEL_PLATFORM_TARGET=sdk)
expect_configure(succeeds "Build files have been written"
    -DORVEL_PLATFORM_DIR=tests/porting/strict/platform "-DORVEL_PLATFORM_INCLUDE_DIRS=${BINARY}")
file(STRINGS "${BINARY}/build/compile_commands.json" commands REGEX "isystem ${BINARY}( |$)")
if(NOT commands)
    message(SEND_ERROR "expected that the sources are compiled with the folders of ORVEL_PLATFORM_INCLUDE_DIRS")
endif()
