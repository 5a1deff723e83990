# `add_schema_texts(TARGET FOLDER)`: compiles the JSON Schemas of the folder into the target, as orvelcs/output/schemas.h
# declares them.
function(add_schema_texts target folder)
    file(GLOB files CONFIGURE_DEPENDS "${folder}/*.json")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
    set(list "")
    foreach(file IN LISTS files)
        get_filename_component(name "${file}" NAME_WLE)
        file(READ "${file}" text)
        string(APPEND list "    {\"${name}\", R\"schema(${text})schema\"},\n")
    endforeach()
    set(source "${CMAKE_CURRENT_BINARY_DIR}/schema_texts.cpp")
    file(WRITE "${source}.new" "#include \"orvelcs/output/schemas.h\"\n\n"
        "namespace Orvelcs {\nnamespace {\n\nconstexpr Schema kSchemas[] = {\n${list}};\n\n} // namespace\n\n"
        "std::span<const Schema> schemas()\n{\n    return kSchemas;\n}\n\n} // namespace Orvelcs\n")
    file(COPY_FILE "${source}.new" "${source}" ONLY_IF_DIFFERENT)
    target_sources(${target} PRIVATE "${source}")
    set_source_files_properties("${source}" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
