# Sanitizers, coverage and hardening go into every object or into none.
if(ORVEL_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        add_compile_options("-fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/UndefinedBehaviourElsewhere.txt")
    endif()
    add_link_options(-fsanitize=address,undefined)
endif()
# `count_for_fuzzers(TARGET [SOURCE…])` has libFuzzer's counters in a target, or in some of its sources: what they count
# is what leads the fuzzers on, and counting all else is most of what an execution costs. In single sources the
# comparisons are not counted, which would be those of a JSON library's inside. The counters themselves are in each
# fuzzer, so that a shared library has them from the program that uses it.
function(count_for_fuzzers target)
    if(NOT ORVEL_FUZZ)
        return()
    elseif(ARGN)
        set_source_files_properties(${ARGN} TARGET_DIRECTORY ${target} PROPERTIES SKIP_PRECOMPILE_HEADERS ON
            COMPILE_OPTIONS "-fsanitize=fuzzer-no-link;-fno-sanitize-coverage=trace-cmp")
    else()
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
endfunction()
if(ORVEL_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()
if(ORVEL_HARDENED)
    add_compile_options(-fsanitize=undefined -fsanitize-undefined-trap-on-error -fstack-protector-strong)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    add_link_options(-fstack-protector-strong)
endif()
# The programs are to run where nothing of the compiler's is installed.
if(MINGW)
    add_link_options(-static)
endif()
