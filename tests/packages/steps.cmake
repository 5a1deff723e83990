# What the scripts of this folder do in common.
cmake_minimum_required(VERSION 3.25)

# Fails unless the command succeeds; what it printed is left in `output`.
macro(run)
    execute_process(COMMAND ${ARGV} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        list(JOIN output "\n" output)
        message(FATAL_ERROR "expected the command to succeed, and it ended with ${result}: ${ARGV}\n${output}")
    endif()
endmacro()

# Leaves the pkg-config file's flags for a client in `pc_flags`, and fails unless it is there in version 1.0 or newer.
macro(read_pkg_config prefix)
    file(GLOB pc_folder "${prefix}/lib/*/pkgconfig" "${prefix}/lib/pkgconfig")
    set(ENV{PKG_CONFIG_PATH} "${pc_folder}")
    run("${PKG_CONFIG}" --print-errors --exists "orvel-coordsys-core >= 1.0")
    run("${PKG_CONFIG}" --cflags --libs orvel-coordsys-core)
    separate_arguments(pc_flags UNIX_COMMAND "${output}")
endmacro()

# Fails where an installed text names a folder of the build or of the sources.
function(expect_no_build_paths prefix)
    file(GLOB_RECURSE texts "${prefix}/*.h" "${prefix}/*.cmake" "${prefix}/*.pc")
    foreach(text IN LISTS texts)
        file(STRINGS "${text}" places REGEX "${SOURCE}|${BUILD}")
        if(NOT places STREQUAL "")
            message(FATAL_ERROR "expected no path of the build in an installed file, found one in ${text}: ${places}")
        endif()
    endforeach()
endfunction()
