# What `make package` packs besides the rooms' own files, and into what.
# The first page leads to the headers, which lie elsewhere there.
file(RELATIVE_PATH headers "/${ORVEL_DOCUMENT_FOLDER}" "/${ORVEL_HEADER_FOLDER}")
file(READ README.md first_page)
string(REPLACE "](src/" "](${headers}/" first_page "${first_page}")
file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/package/first_page.md" CONTENT "${first_page}" @ONLY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS README.md)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/package/first_page.md" DESTINATION "${ORVEL_DOCUMENT_FOLDER}" RENAME README.md)
install(FILES CHANGELOG.md CONTRIBUTING.md DESTINATION "${ORVEL_DOCUMENT_FOLDER}")
install(DIRECTORY docs DESTINATION "${ORVEL_DOCUMENT_FOLDER}")
file(GLOB examples CONFIGURE_DEPENDS examples/*.cpp)
install(FILES ${examples} examples/README.md DESTINATION "${ORVEL_DOCUMENT_FOLDER}/examples")

# The terms of what is compiled in, by the packages that it came from. What is a package of its own on the user's machine
# brings its own.
set(compiled_in "CLI11:libcli11-dev" "JSON for Modern C++:nlohmann-json3-dev" "SQLiteCpp:libsqlitecpp-dev"
    "UTF8-CPP:libutfcpp-dev" "expected:libexpected-dev" "fmt:libfmt-dev" "xxHash:libxxhash-dev")
if(WIN32)
    list(APPEND compiled_in "PROJ and its catalog:libproj-dev" "SQLite:libsqlite3-0"
        "MinGW-w64 runtime:mingw-w64-x86-64-dev" "GCC runtime libraries:gcc-mingw-w64-x86-64-posix-runtime")
endif()
set(licence_list "")
foreach(entry IN LISTS compiled_in)
    string(REGEX MATCH "^(.*):(.*)$" entry "${entry}")
    set(terms "/usr/share/doc/${CMAKE_MATCH_2}/copyright")
    if(NOT EXISTS "${terms}") # as on systems other than Debian
        message(STATUS "A package made here would lack the terms of ${CMAKE_MATCH_1}: there is no ${terms}")
        continue()
    endif()
    string(APPEND licence_list "- ${CMAKE_MATCH_1}: [${CMAKE_MATCH_2}.txt](${CMAKE_MATCH_2}.txt)\n")
    install(FILES "${terms}" DESTINATION "${ORVEL_DOCUMENT_FOLDER}/licences" RENAME "${CMAKE_MATCH_2}.txt")
endforeach()
configure_file(cmake/packages/licences.md.in "${CMAKE_CURRENT_BINARY_DIR}/package/README.md" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/package/README.md" DESTINATION "${ORVEL_DOCUMENT_FOLDER}/licences")

string(TOLOWER "${CMAKE_SYSTEM_NAME}" system)
set(CPACK_GENERATOR External)
set(CPACK_PACKAGE_NAME orvel-coordsys-core)
set(CPACK_PACKAGE_FILE_NAME "${CPACK_PACKAGE_NAME}-${PROJECT_VERSION}-${system}-${CMAKE_SYSTEM_PROCESSOR}")
set(CPACK_PACKAGE_VENDOR "The OrvelCoordsysCore developers")
set(CPACK_PACKAGE_CONTACT "The OrvelCoordsysCore developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "geodetic coordinate systems of drawings")
set(CPACK_PACKAGE_DESCRIPTION "A module that a CAD host loads to put drawings on the Earth, an embedded
host for it, and orvelcs, a command line that assigns coordinate systems to
drawings.")
set(CPACK_STRIP_FILES ON)
list(APPEND CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_SOURCE_DIR}/cmake/packages/debian_files.cmake"
    "${CMAKE_CURRENT_SOURCE_DIR}/cmake/packages/settle_files.cmake")
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT "${CMAKE_CURRENT_SOURCE_DIR}/cmake/packages/pack_archive.cmake")
if(NOT WIN32)
    list(APPEND CPACK_GENERATOR DEB)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SECTION science)
    # The packages of the libraries that the files are linked with, found where the libraries of this one are.
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
    if(ORVEL_PROJ_LIBRARY) # is not linked; Debian's package of libNAME.so.N is libNAMEN
        string(REPLACE ".so." "" CPACK_DEBIAN_PACKAGE_DEPENDS "${ORVEL_PROJ_LIBRARY}")
    endif()
endif()
include(CPack)
