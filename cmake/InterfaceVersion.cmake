# The version of the interface, which clients ask for: libraries carry it in their sonames, and the CMake package accepts
# requests for it. It is the part of the project's version that changes with every incompatible change: before 1.0 the
# first two numbers, afterwards the first.
if(PROJECT_VERSION_MAJOR EQUAL 0)
    set(ORVEL_INTERFACE_VERSION "0.${PROJECT_VERSION_MINOR}")
    set(ORVEL_COMPATIBLE_VERSIONS SameMinorVersion)
else()
    set(ORVEL_INTERFACE_VERSION "${PROJECT_VERSION_MAJOR}")
    set(ORVEL_COMPATIBLE_VERSIONS SameMajorVersion)
endif()
