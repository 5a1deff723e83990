# Before a package for Debian is made: the files that Debian expects in places or formats of its own.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()
set(root "${CPACK_TEMPORARY_DIRECTORY}/${CPACK_PACKAGING_INSTALL_PREFIX}")
set(documents "${root}/share/doc/${CPACK_PACKAGE_NAME}")

configure_file("${CMAKE_CURRENT_LIST_DIR}/copyright.txt" "${documents}/copyright" COPYONLY)

string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC) # of SOURCE_DATE_EPOCH
file(WRITE "${documents}/changelog" "${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium

  * CHANGELOG.md beside this file lists the changes.

 -- ${CPACK_PACKAGE_CONTACT} <>  ${date}
")
execute_process(COMMAND gzip -9n "${documents}/changelog" COMMAND_ERROR_IS_FATAL ANY)

if(EXISTS "${root}/share/zsh/site-functions")
    file(RENAME "${root}/share/zsh/site-functions" "${root}/share/zsh/vendor-completions")
endif()
