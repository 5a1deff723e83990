# Runs PROGRAM in the empty FOLDER with ORVEL_WRONG_PORT=WRONG. It must end with STATUS and print, in its output or its
# errors, what matches each line of EXPRESSIONS.
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}/settings")
set(ENV{ORVEL_WRONG_PORT} "${WRONG}")
set(ENV{VORLEN_USER_DICTIONARY_PATH} "${FOLDER}/settings")
set(ENV{XDG_CONFIG_HOME} "${FOLDER}/registry") # where the stand-in for the registry is
execute_process(COMMAND "${PROGRAM}" WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE status
    OUTPUT_VARIABLE output ERROR_VARIABLE errors)
file(REMOVE_RECURSE "${FOLDER}")
if(NOT status STREQUAL STATUS)
    message(FATAL_ERROR "expected the exit status ${STATUS}, found ${status}\n${output}${errors}")
endif()
string(REPLACE "\n" ";" expressions "${EXPRESSIONS}")
foreach(expression IN LISTS expressions)
    if(NOT "${output}${errors}" MATCHES "${expression}")
        message(FATAL_ERROR "the output does not match \"${expression}\":\n${output}${errors}")
    endif()
endforeach()
