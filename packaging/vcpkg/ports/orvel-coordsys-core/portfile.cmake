# Builds the checkout in which this port lies. Not tried so far (../../README.md).
get_filename_component(SOURCE_PATH "${CURRENT_PORT_DIR}/../../../.." ABSOLUTE)
set(VCPKG_BUILD_TYPE release) # the CMake package knows one build of each library
set(VCPKG_LIBRARY_LINKAGE dynamic) # a host loads the module from its file

vcpkg_cmake_configure(SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS
        -DBUILD_TESTING=OFF
        -DORVEL_CONFIG_FOLDER=share/OrvelCoordsysCore
        -DORVEL_DOCUMENT_FOLDER=share/doc/orvel-coordsys-core)
vcpkg_cmake_install()
vcpkg_fixup_pkgconfig()

# The command line finds its libraries from where it is installed, and vcpkg would move it.
file(REMOVE "${CURRENT_PACKAGES_DIR}/bin/orvelcs${VCPKG_TARGET_EXECUTABLE_SUFFIX}")
if(NOT VCPKG_TARGET_IS_WINDOWS)
    file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/bin")
endif()

vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/cmake/packages/copyright.txt")
