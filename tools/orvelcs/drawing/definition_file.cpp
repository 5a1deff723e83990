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

Failure definitionFailure(const std::string& subject, Library::Status status, const std::wstring& text)
{
    const auto check = Embedded::checkUserText(Embedded::utf8FromWide(text));
    const std::string reason = check ? "the definition cannot be used" : check.error().message;
    return Failure(subject, fmt::format("{}: {}", reason, statusName(status)), ExitStatus::failed, resultCode(status));
}

} // namespace

std::wstring definitionTextFrom(const std::string& subject, const std::string& bytes)
{
    if (bytes.size() > kLongestDefinitionInBytes)
        throw Failure(subject, fmt::format("longer than {} bytes", kLongestDefinitionInBytes));
    std::wstring text = decodeText(subject, bytes);
    if (text.find_first_not_of(L" \t\r\n") == std::wstring::npos)
        throw Failure(subject, "is empty");
    return text;
}

SystemHolder systemFromText(const std::string& subject, const std::wstring& text, const std::wstring& code)
{
    SystemHolder system;
    const Library::Status status =
        Library::CoordinateReferenceSystemDefinition::CreateFromText(text.c_str(), code.c_str(), system.put());
    if (status != Library::statusOk || !system)
        throw definitionFailure(subject, status, text);
    return system;
}

std::wstring identifierInText(const std::string& subject, const std::wstring& text)
{
    const auto code = Embedded::userTextCode(Embedded::utf8FromWide(text));
    if (!code)
        throw definitionFailure(subject, Library::statusUnreadable, text);
    return Embedded::wideFromUtf8(*code);
}

} // namespace Orvelcs
