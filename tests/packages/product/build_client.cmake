# Installs the module that was built in BUILD for a product, into the empty folder PREFIX. Then builds a client against that
# folder alone and the product's library PLATFORM, and runs it. COMPILER and FLAGS are those of the module.
include("${CMAKE_CURRENT_LIST_DIR}/../steps.cmake")
file(REMOVE_RECURSE "${PREFIX}")
run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${PREFIX}")
expect_no_build_paths("${PREFIX}")

file(GLOB_RECURSE modules "${PREFIX}/*/OrvelCoordsysCore.so")
list(LENGTH modules count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "expected one OrvelCoordsysCore.so below ${PREFIX}, found ${count}")
endif()

# Each public header is complete by itself.
separate_arguments(flags UNIX_COMMAND "${FLAGS}")
set(compile "${COMPILER}" ${flags} -std=c++20)
file(GLOB public_headers RELATIVE "${PREFIX}/include/orvel-coordsys-core"
    "${PREFIX}/include/orvel-coordsys-core/coordsys/*.h")
foreach(header IN LISTS public_headers)
    file(WRITE "${PREFIX}/header.cpp" "#include \"${header}\"\n")
    run(${compile} "-I${PREFIX}/include/orvel-coordsys-core" -fsyntax-only "${PREFIX}/header.cpp")
endforeach()

cmake_path(GET modules PARENT_PATH module_folder)
cmake_path(GET PLATFORM PARENT_PATH platform_folder)
set(ENV{LD_LIBRARY_PATH} "${module_folder}:${platform_folder}")

run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}" -B "${PREFIX}/by_cmake" -G "${GENERATOR}"
    "-DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}" "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_FLAGS=${FLAGS}"
    "-DCMAKE_PREFIX_PATH=${PREFIX}" "-DPLATFORM=${PLATFORM}")
run("${CMAKE_COMMAND}" --build "${PREFIX}/by_cmake")
run("${PREFIX}/by_cmake/client")

if(PKG_CONFIG)
    read_pkg_config("${PREFIX}")
    run(${compile} "${CMAKE_CURRENT_LIST_DIR}/client.cpp" -o "${PREFIX}/client" ${pc_flags} "${PLATFORM}")
    run("${PREFIX}/client")
endif()
file(REMOVE_RECURSE "${PREFIX}")
