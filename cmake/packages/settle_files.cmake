# Before an archive is made: manual pages are compressed, as Debian wants them, and what the files carry of the day and
# the umask that they were installed with goes.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    message(FATAL_ERROR "SOURCE_DATE_EPOCH is to say which date the files in the package get")
endif()
set(folder "${CPACK_TEMPORARY_DIRECTORY}")
foreach(command IN ITEMS
        "find;${folder};-path;*/share/man/*;-type;f;-exec;gzip;-9n;{};+"
        "find;${folder};-type;d;-exec;chmod;755;{};+"
        "find;${folder};-type;f;-perm;/111;-exec;chmod;755;{};+"
        "find;${folder};-type;f;!;-perm;/111;-exec;chmod;644;{};+"
        "find;${folder};-exec;touch;--no-dereference;--date=@$ENV{SOURCE_DATE_EPOCH};{};+")
    execute_process(COMMAND ${command} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
