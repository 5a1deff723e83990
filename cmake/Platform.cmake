# The platform that the module stands on: the project's own, or a product's four headers with what they need.
set(ORVEL_PLATFORM_DIR "${PROJECT_SOURCE_DIR}/platform" CACHE PATH
    "Folder with host.h, spatial_reference.h, foundation.h and win32.h; another than the default builds the module alone")
set(ORVEL_PLATFORM_TARGET "" CACHE STRING
    "CMake target of the product's, whose include folders, definitions and libraries the module built alone uses")
set(ORVEL_PLATFORM_INCLUDE_DIRS "" CACHE STRING
    "Folders in which the four headers find those of the product's SDK")
set(ORVEL_PLATFORM_LIBRARIES "" CACHE STRING
    "What the module built alone is linked with; without any, the process that loads it has its platform's symbols")

# The names of the four headers, by which the module's sources include them in the folder `platform`.
set(ORVEL_PLATFORM_HEADERS host.h spatial_reference.h foundation.h win32.h)

function(check_platform_folder variable folder)
    if(NOT IS_ABSOLUTE "${folder}")
        message(FATAL_ERROR "${variable} is \"${folder}\", which is not an absolute path. In a CMakeLists.txt, write "
            "\"\${CMAKE_CURRENT_SOURCE_DIR}/${folder}\"; on the command line, leave out the variable's type")
    elseif(NOT IS_DIRECTORY "${folder}")
        message(FATAL_ERROR "${variable} names a folder that does not exist: \"${folder}\"")
    endif()
endfunction()

check_platform_folder(ORVEL_PLATFORM_DIR "${ORVEL_PLATFORM_DIR}")
foreach(header IN LISTS ORVEL_PLATFORM_HEADERS)
    if(NOT EXISTS "${ORVEL_PLATFORM_DIR}/${header}")
        list(JOIN ORVEL_PLATFORM_HEADERS ", " names)
        message(FATAL_ERROR "ORVEL_PLATFORM_DIR has no ${header}: \"${ORVEL_PLATFORM_DIR}\". It must have the headers "
            "${names}: copy those in examples/port/platform and fill them (docs/porting.md)")
    endif()
endforeach()
foreach(folder IN LISTS ORVEL_PLATFORM_INCLUDE_DIRS)
    check_platform_folder(ORVEL_PLATFORM_INCLUDE_DIRS "${folder}")
endforeach()
foreach(library IN LISTS ORVEL_PLATFORM_LIBRARIES)
    # A product that takes this project into its own may make its libraries later.
    if(PROJECT_IS_TOP_LEVEL AND IS_ABSOLUTE "${library}" AND NOT EXISTS "${library}")
        message(FATAL_ERROR "ORVEL_PLATFORM_LIBRARIES names a library that does not exist: \"${library}\"")
    endif()
endforeach()
if(ORVEL_PLATFORM_TARGET AND NOT TARGET "${ORVEL_PLATFORM_TARGET}")
    message(FATAL_ERROR "ORVEL_PLATFORM_TARGET names a target that does not exist: \"${ORVEL_PLATFORM_TARGET}\". "
        "Define it in the product's CMakeLists.txt before add_subdirectory takes this project in")
endif()

file(REAL_PATH "${ORVEL_PLATFORM_DIR}" given_platform)
file(REAL_PATH "${PROJECT_SOURCE_DIR}/platform" own_platform)
cmake_path(COMPARE "${given_platform}" EQUAL "${own_platform}" ORVEL_EMBEDDED)
