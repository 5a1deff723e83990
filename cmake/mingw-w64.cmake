# Builds for 64-bit Windows with Debian's mingw-w64 (the variant with POSIX threads, which std::thread and std::mutex
# need there) against the libraries that scripts/windows-libraries.sh has made.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(NOT DEFINED ORVEL_WINDOWS_LIBRARIES)
    execute_process(COMMAND "${CMAKE_CURRENT_LIST_DIR}/../scripts/windows-libraries.sh" --where
        OUTPUT_VARIABLE folder OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(ORVEL_WINDOWS_LIBRARIES "${folder}" CACHE PATH "What scripts/windows-libraries.sh has made")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ORVEL_WINDOWS_LIBRARIES)

# Nothing is to come from the folders of the machine that builds, but for the programs that run on it.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 "${ORVEL_WINDOWS_LIBRARIES}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
