# Compiles the module's requirements against platforms with one mistake each, and expects a message that names it.
#     cmake -D SOURCE=… -D BINARY=… -D COMPILER=… -P requirement_messages.cmake
set(strict "${SOURCE}/tests/porting/strict/platform")

function(compile_requirements output)
    execute_process(
        COMMAND "${COMPILER}" -std=c++20 -fsyntax-only "-I${SOURCE}/src" "-I${BINARY}"
            "${SOURCE}/src/storage/platform_requirements.cpp"
        OUTPUT_VARIABLE text ERROR_VARIABLE text)
    set(${output} "${text}" PARENT_SCOPE)
endfunction()

# Replaces a text of one header and expects the message.
function(expect_message header before after message)
    file(COPY "${strict}/" DESTINATION "${BINARY}/platform")
    file(READ "${strict}/${header}" text)
    string(REPLACE "${before}" "${after}" changed "${text}")
    if(changed STREQUAL text)
        message(SEND_ERROR "${header} has no \"${before}\"")
    endif()
    file(WRITE "${BINARY}/platform/${header}" "${changed}")
    compile_requirements(output)
    string(FIND "${output}" "${message}" position)
    if(position EQUAL -1)
        message(SEND_ERROR "${header} with \"${after}\": expected \"${message}\", found: ${output}")
    endif()
endfunction()

file(REMOVE_RECURSE "${BINARY}")
file(COPY "${strict}/" DESTINATION "${BINARY}/platform")
compile_requirements(output)
if(NOT output STREQUAL "")
    message(SEND_ERROR "expected no message for the strict platform, found: ${output}")
endif()

expect_message(host.h "eVetoed = 325" "eVetoed = 3250" "host.h: the module's clients rely on the numbers of Qeapp::eOk")
expect_message(host.h "eKeyNotFound = 22" "eKeyNotFound = 15" "host.h: no two results of Qeapp may have the same number")
expect_message(host.h "std::int32_t rlong" "std::int64_t rlong" "host.h: rlong in resbuf::resval")
expect_message(host.h "    virtual Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database, QeDb::QeDbDwgVersion version,\n"
    "public:\n    virtual Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database,\n"
    "host.h: QeDbDecompositionReactor::decomposeForSave must return Qeapp::ErrorStatus and have the parameters")
expect_message(host.h "enum GroupCode : int {\n    kText = 300,\n"
    "enum class Text { kText = 300 };\nusing enum Text;\nenum GroupCode : int {\n"
    "host.h: the group codes of QeRb must convert to int")
set(kinds "kindNotEarthReferenced = 1, kindGeographic = 2, kindProjected = 3")
expect_message(spatial_reference.h "enum CoordinateReferenceSystemKind : int { ${kinds} };"
    "enum class CoordinateReferenceSystemKind { ${kinds} };\nusing enum CoordinateReferenceSystemKind;"
    "spatial_reference.h: the three kinds of systems must convert to int")
expect_message(spatial_reference.h "statusNotFound = 35" "statusNotFound = 36"
    "spatial_reference.h: the module's clients rely on the numbers of Status")
expect_message(foundation.h "virtual ~FqDisposable" "~FqDisposable"
    "foundation.h: FqDisposable must have a virtual destructor")
expect_message(win32.h "using DWORD = unsigned int" "using DWORD = unsigned long" "win32.h: DWORD must be")
