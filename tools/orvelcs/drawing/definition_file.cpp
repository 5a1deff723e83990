#include "orvelcs/drawing/definition_file.h"

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/definitions/user_text.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

constexpr std::size_t kLongestDefinitionInBytes = std::size_t{1} << 20;

std::string describeDefinitionFailure(Library::Status status, const std::wstring& text)
{
    if (const auto check = Embedded::checkUserText(Embedded::utf8FromWide(text)); !check)
        return check.error().message + ": " + statusName(status);
    return "the definition cannot be used: " + statusName(status);
}

} // namespace

DefinedSystem systemFromTextFile(const std::string& file, const std::wstring& code)
{
    const std::wstring text = readText(file, kLongestDefinitionInBytes);
    if (text.find_first_not_of(L" \t\r\n") == std::wstring::npos)
        throw Failure(file, "is empty");
    DefinedSystem system;
    const Library::Status status =
        Library::CoordinateReferenceSystemDefinition::CreateFromText(text.c_str(), code.c_str(), system.put());
    if (status != Library::statusOk || !system)
        throw Failure(file, describeDefinitionFailure(status, text), ExitStatus::failed, resultCode(status));
    return system;
}

} // namespace Orvelcs
