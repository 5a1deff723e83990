# The header-only libraries for the Windows edition, under the names that their own packages give them: those packages
# would answer with the include folder of the machine that builds.
foreach(library IN ITEMS nlohmann_json::nlohmann_json CLI11::CLI11 fmt::fmt utf8cpp xxhash tl::expected)
    add_library(${library} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${library} SYSTEM INTERFACE "${ORVEL_WINDOWS_LIBRARIES}/header-only")
endforeach()
target_compile_definitions(fmt::fmt INTERFACE FMT_HEADER_ONLY)
