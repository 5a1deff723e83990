#include "orvelcs/drawing/definition_file.h"

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/definitions/user_text.h"
#include "orvelcs/cli/standard_streams.h"
#include "orvelcs/cli/text_bytes.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

constexpr std::size_t kLongestDefinitionInBytes = std::size_t{1} << 20;

std::wstring definitionText(const std::string& file)
{
    const std::string bytes = readWhole(file, kLongestDefinitionInBytes);
    const std::string_view utf8 = withoutByteOrderMark(bytes);
    if (const auto fault = faultOfText(utf8))
        throw DefinitionFailure(file, *fault, Library::statusOk);
    if (utf8.find_first_not_of(" \t\r\n") == std::string_view::npos)
        throw DefinitionFailure(file, "is empty", Library::statusOk);
    return Embedded::wideFromUtf8(utf8);
}

std::string reasonOf(Library::Status status, const std::wstring& text)
{
    if (const auto check = Embedded::checkUserText(Embedded::utf8FromWide(text)); !check)
        return check.error().message + ": " + statusName(status);
    return "the definition cannot be used: " + statusName(status);
}

} // namespace

DefinedSystem systemFromTextFile(const std::string& file, const std::wstring& code)
{
    const std::wstring text = definitionText(file);
    DefinedSystem system;
    const Library::Status status =
        Library::CoordinateReferenceSystemDefinition::CreateFromText(text.c_str(), code.c_str(), system.put());
    if (status != Library::statusOk || !system)
        throw DefinitionFailure(file, reasonOf(status, text), status);
    return system;
}

} // namespace Orvelcs
