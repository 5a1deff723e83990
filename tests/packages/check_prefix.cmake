# Checks the installed copy below PREFIX: the program works, and clients are built through CMake and through pkg-config
# against nothing else, and work. Included by the scripts that make the copy. WORK is a folder for what is made here, and
# CMake looks for packages below CMAKE_PREFIX. Debian has a folder of its own for zsh, ZSH_FOLDER, and compresses the
# MAN_PAGE.
foreach(variable IN ITEMS CXXFLAGS LDFLAGS LD_LIBRARY_PATH CMAKE_PREFIX_PATH PROJ_DATA PROJ_LIB)
    unset(ENV{${variable}})
endforeach()

expect_no_build_paths("${PREFIX}")
set(documents "${PREFIX}/share/doc/orvel-coordsys-core")
file(READ "${documents}/README.md" first_page)
string(REPLACE "](" "link(" first_page "${first_page}") # a list's items may have no brackets
string(REGEX MATCHALL "link\\([^)#:]+[)#]" links "${first_page}") # a link with a colon leads elsewhere
list(TRANSFORM links REPLACE "^link.(.*)[)#]$" "\\1")
list(REMOVE_DUPLICATES links)
foreach(file IN ITEMS ${links} licences/README.md)
    if(NOT EXISTS "${documents}/${file}")
        message(FATAL_ERROR "expected ${documents}/${file}, to which the first page leads, found none")
    endif()
endforeach()

set(drawing "${WORK}/plan.qedb")
run("${PREFIX}/bin/orvelcs" new "${drawing}")
run("${PREFIX}/bin/orvelcs" assign EPSG:25832 "${drawing}")
run("${PREFIX}/bin/orvelcs" show "${drawing}")
if(NOT output MATCHES "ETRS89 / UTM zone 32N")
    message(FATAL_ERROR "expected show to name the drawing's system, found: ${output}")
endif()

# What the program prints for each shell lies where that shell looks for it.
foreach(shell_and_file IN ITEMS bash:bash-completion/completions/orvelcs zsh:zsh/${ZSH_FOLDER}/_orvelcs
        fish:fish/vendor_completions.d/orvelcs.fish)
    string(REGEX MATCH "^(.*):(.*)$" shell_and_file "${shell_and_file}")
    set(script "${PREFIX}/share/${CMAKE_MATCH_2}")
    run("${PREFIX}/bin/orvelcs" completion ${CMAKE_MATCH_1})
    file(READ "${script}" installed)
    if(installed STREQUAL "" OR NOT installed STREQUAL output)
        message(FATAL_ERROR "expected ${script} to be what orvelcs completion prints, found another text")
    endif()
endforeach()
run(zcat -f "${PREFIX}/share/man/man1/${MAN_PAGE}")
if(NOT output MATCHES "\n\\.TH ORVELCS 1")
    message(FATAL_ERROR "expected a manual page, found: ${output}")
endif()

set(consumer "${CMAKE_CURRENT_LIST_DIR}/consumer")
run("${CMAKE_COMMAND}" -S "${consumer}" -B "${WORK}/by_cmake" -G "${GENERATOR}" "-DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_PREFIX_PATH=${CMAKE_PREFIX}")
run("${CMAKE_COMMAND}" --build "${WORK}/by_cmake")
run("${WORK}/by_cmake/consumer")

read_pkg_config("${PREFIX}")
run("${COMPILER}" -std=c++20 "${consumer}/consumer.cpp" -o "${WORK}/by_pkg_config" ${pc_flags})
run("${WORK}/by_pkg_config")

# Both ask the system for the module by the interface's version.
foreach(client IN ITEMS "${WORK}/by_cmake/consumer" "${WORK}/by_pkg_config")
    run("${READELF}" -d "${client}")
    if(NOT output MATCHES "NEEDED[^\n]*\\[OrvelCoordsysCore\\.so\\.${INTERFACE_VERSION}\\]")
        message(FATAL_ERROR "expected ${client} to need OrvelCoordsysCore.so.${INTERFACE_VERSION}, found: ${output}")
    endif()
endforeach()

# A host that loads the module by its plain name, and then a client.
file(GLOB module "${PREFIX}/lib/*/orvel-coordsys-core/OrvelCoordsysCore.so")
run("${COMPILER}" -std=c++20 -fPIC -shared "${CMAKE_CURRENT_LIST_DIR}/loaded/client.cpp" -o "${WORK}/client.so" ${pc_flags})
run("${COMPILER}" -std=c++20 "${CMAKE_CURRENT_LIST_DIR}/loaded/host.cpp" -o "${WORK}/host" -Wl,--as-needed ${pc_flags} -ldl)
run("${WORK}/host" "${module}" "${WORK}/client.so")
