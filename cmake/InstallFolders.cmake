# Where files go below the prefix of an installation. On Windows libraries are looked for beside the program, and all else
# is by itself in a folder of the product's; elsewhere the prefix is shared with others, so that what is not looked for by
# the system lies in folders of the project's name.
if(WIN32)
    set(ORVEL_LIBRARY_FOLDER lib)
    set(ORVEL_HEADER_FOLDER include)
    set(document_folder .)
else()
    set(ORVEL_LIBRARY_FOLDER "")
    cmake_path(APPEND ORVEL_LIBRARY_FOLDER lib "${CMAKE_LIBRARY_ARCHITECTURE}" orvel-coordsys-core)
    set(ORVEL_HEADER_FOLDER include/orvel-coordsys-core)
    set(document_folder share/doc/orvel-coordsys-core)
endif()
set(ORVEL_DOCUMENT_FOLDER "${document_folder}" CACHE STRING "Folder of the documents, below the prefix")
set(ORVEL_CONFIG_FOLDER lib/cmake/OrvelCoordsysCore CACHE STRING "Folder of the CMake package, below the prefix")
# The libraries find each other wherever the prefix is moved to. Built files have the search path of installed ones: a path
# that is to be replaced gets an empty name at its end, which stands for the current folder.
set(CMAKE_INSTALL_RPATH "$ORIGIN")
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)
set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
