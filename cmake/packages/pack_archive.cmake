# Packs the staged files, under one folder of the package's name: a zip for Windows, a tar.gz elsewhere. Both list their
# files by name and tell neither who packed them nor when.
set(ENV{TZ} UTC)    # a zip has the local time of those who pack it
set(ENV{LC_ALL} C)  # and the order is that of bytes
cmake_path(GET CPACK_TEMPORARY_DIRECTORY PARENT_PATH above)
cmake_path(GET CPACK_TEMPORARY_DIRECTORY FILENAME folder)
if(NOT folder STREQUAL CPACK_PACKAGE_FILE_NAME)
    message(FATAL_ERROR "staged in ${folder}, not in ${CPACK_PACKAGE_FILE_NAME}")
endif()
set(archive "${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}")
if(CPACK_PACKAGE_FILE_NAME MATCHES "windows")
    string(APPEND archive .zip)
    file(REMOVE "${archive}") # zip would add to it
    execute_process(COMMAND find "${folder}" -type f COMMAND sort COMMAND zip -q -X -9 "${archive}" -@
        WORKING_DIRECTORY "${above}" COMMAND_ERROR_IS_FATAL ANY)
else()
    string(APPEND archive .tar.gz)
    execute_process(
        COMMAND tar --sort=name --owner=0 --group=0 --numeric-owner --format=gnu -cf - "${folder}"
        COMMAND gzip -9 -n
        OUTPUT_FILE "${archive}" WORKING_DIRECTORY "${above}" COMMAND_ERROR_IS_FATAL ANY)
endif()
set(CPACK_EXTERNAL_BUILT_PACKAGES "${archive}")
