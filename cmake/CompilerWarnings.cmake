# Every target of the project is compiled with these. A warning is an error.
add_library(project_warnings INTERFACE)
if(MSVC) # which nobody has tried: its warnings are not errors
    target_compile_options(project_warnings INTERFACE /W4 /permissive- /utf-8 /Zc:__cplusplus /EHsc)
    return()
endif()
target_compile_options(project_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual -Wcast-align
    -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2 -Wimplicit-fallthrough
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op -Wuseless-cast>)

# Whether a cast is useless, a destructor must be virtual or a function is hidden depends on a product's own types.
if(NOT ORVEL_EMBEDDED)
    target_compile_options(project_warnings INTERFACE
        -Wno-non-virtual-dtor -Wno-overloaded-virtual $<$<CXX_COMPILER_ID:GNU>:-Wno-useless-cast>)
endif()

# When it optimises, g++ 12 warns of the inside of std::string's operator+ and of std::variant's destructor, and among
# its own traps of a vector's first element, where there is nothing amiss; clang and later versions of g++ do not.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(project_warnings INTERFACE
        -Wno-restrict -Wno-free-nonheap-object -Wno-maybe-uninitialized
        $<$<BOOL:${ORVEL_HARDENED}>:-Wno-array-bounds>)
endif()
