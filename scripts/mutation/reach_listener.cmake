# Read by CMake after project(), where scripts/mutate configures the rewritten tree: once the targets are there, the test
# programs get the listener.
function(add_reach_listener)
    foreach(program IN LISTS ORVEL_MUTATED_PROGRAMS)
        target_sources(${program} PRIVATE "${CMAKE_SOURCE_DIR}/scripts/mutation/reach_listener.cpp")
        set_source_files_properties("${CMAKE_SOURCE_DIR}/scripts/mutation/reach_listener.cpp"
            TARGET_DIRECTORY ${program} PROPERTIES SKIP_PRECOMPILE_HEADERS ON SKIP_UNITY_BUILD_INCLUSION ON)
    endforeach()
endfunction()
cmake_language(DEFER CALL add_reach_listener)
