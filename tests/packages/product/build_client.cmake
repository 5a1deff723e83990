# Installs the module that was built in BUILD for a product, into the empty folder PREFIX. Then builds a client against that
# folder alone and the product's library PLATFORM, and runs it. COMPILER and FLAGS are those of the module.
function(run)
    execute_process(COMMAND ${ARGV} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        list(JOIN ARGV " " command)
        message(FATAL_ERROR "expected the command to succeed, and it ended with ${result}: ${command}\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE "${PREFIX}")
run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${PREFIX}")

file(GLOB_RECURSE modules "${PREFIX}/*/OrvelCoordsysCore.so")
list(LENGTH modules count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "expected one OrvelCoordsysCore.so below ${PREFIX}, found ${count}")
endif()
file(GLOB_RECURSE headers "${PREFIX}/include/orvel-coordsys-core/*")
foreach(header IN LISTS headers)
    file(STRINGS "${header}" places REGEX "${SOURCE}|${BUILD}")
    if(NOT places STREQUAL "")
        message(FATAL_ERROR "expected no path of the build in an installed header, found one in ${header}: ${places}")
    endif()
endforeach()

# Each public header is complete by itself.
separate_arguments(FLAGS UNIX_COMMAND "${FLAGS}")
set(compile "${COMPILER}" ${FLAGS} -std=c++20 "-I${PREFIX}/include/orvel-coordsys-core")
file(GLOB public_headers RELATIVE "${PREFIX}/include/orvel-coordsys-core"
    "${PREFIX}/include/orvel-coordsys-core/coordsys/*.h")
foreach(header IN LISTS public_headers)
    file(WRITE "${PREFIX}/header.cpp" "#include \"${header}\"\n")
    run(${compile} -fsyntax-only "${PREFIX}/header.cpp")
endforeach()
run(${compile} "${CMAKE_CURRENT_LIST_DIR}/client.cpp" -o "${PREFIX}/client" "${modules}" "${PLATFORM}")

cmake_path(GET modules PARENT_PATH module_folder)
cmake_path(GET PLATFORM PARENT_PATH platform_folder)
set(ENV{LD_LIBRARY_PATH} "${module_folder}:${platform_folder}")
run("${PREFIX}/client")
file(REMOVE_RECURSE "${PREFIX}")
