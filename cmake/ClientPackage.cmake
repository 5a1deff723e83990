# What clients find an installed module by: a CMake package and a file for pkg-config. Both name their files by where they
# lie themselves, so that the prefix can be moved.
include(CMakePackageConfigHelpers)

file(RELATIVE_PATH prefix_from_config "/${ORVEL_CONFIG_FOLDER}" "/")
# Libraries are named for the linker by their files. The module's has no prefix except as an import library, and import
# libraries that are named without their suffix are hidden by -static, with which programs of MinGW-w64 are linked.
if(WIN32)
    set(linked_suffix "${CMAKE_IMPORT_LIBRARY_SUFFIX}")
else()
    set(linked_suffix "${CMAKE_SHARED_LIBRARY_SUFFIX}")
endif()
set(pc_libraries "-l:${CMAKE_IMPORT_LIBRARY_PREFIX}OrvelCoordsysCore${linked_suffix}")
set(package_contents "")
set(platform_libraries "")
set(platform_links "")
if(ORVEL_EMBEDDED)
    # The headers use the platform's functions and classes, so its libraries come with the module. In a product they are the
    # product's own, and clients have them already.
    set(package_contents ", and brings the embedded platform's libraries")
    set(platform_libraries "qehost zsr fqcore")
    set(platform_links "
set_property(TARGET Orvel::CoordsysCore PROPERTY INTERFACE_LINK_LIBRARIES Orvel::qehost Orvel::zsr Orvel::fqcore)")
    string(APPEND pc_libraries
        " -l:libqehost${linked_suffix} -l:libzsr${linked_suffix} -l:libfqcore${linked_suffix}")
endif()
if(ORVEL_EMBEDDED AND NOT WIN32)
    # The linker follows the module to this library; clients are not linked with it.
    string(APPEND platform_libraries " win32posix")
    string(APPEND platform_links "
set_property(TARGET Orvel::CoordsysCore PROPERTY IMPORTED_LINK_DEPENDENT_LIBRARIES Orvel::win32posix)")
    # The folder of the libraries is none of the system's. A product decides itself where its programs find them.
    string(PREPEND pc_libraries "-Wl,-rpath,\${libdir} ")
endif()

set(folder "${PROJECT_BINARY_DIR}/package")
set(config "${folder}/OrvelCoordsysCoreConfig.cmake")
configure_file(cmake/packages/OrvelCoordsysCoreConfig.cmake.in "${config}" @ONLY)
set(config_version "${folder}/OrvelCoordsysCoreConfigVersion.cmake")
write_basic_package_version_file("${config_version}" COMPATIBILITY SameMajorVersion)
install(FILES "${config}" "${config_version}" DESTINATION "${ORVEL_CONFIG_FOLDER}")

cmake_path(SET pc_folder NORMALIZE "lib/${CMAKE_LIBRARY_ARCHITECTURE}/pkgconfig")
file(RELATIVE_PATH prefix_from_pc "/${pc_folder}" "/")
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
configure_file(cmake/packages/orvel-coordsys-core.pc.in "${folder}/orvel-coordsys-core.pc" @ONLY)
install(FILES "${folder}/orvel-coordsys-core.pc" DESTINATION "${pc_folder}")
