#include "embedded/spatial_reference/projjson/catalog_code.h"

#include <algorithm>

#include "embedded/spatial_reference/projjson/local_systems.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {
namespace {

char lowerAscii(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
}

} // namespace

bool equalIgnoringCase(std::string_view left, std::string_view right)
{
    return std::ranges::equal(left, right, {}, lowerAscii, lowerAscii);
}

std::optional<CatalogCode> splitCode(std::string_view utf8)
{
    const auto colon = utf8.find(':');
    if (colon == std::string_view::npos || colon == 0 || colon + 1 == utf8.size())
        return std::nullopt;
    return CatalogCode{std::string(utf8.substr(0, colon)), std::string(utf8.substr(colon + 1))};
}

std::optional<CatalogCode> resolveCode(std::string_view utf8)
{
    auto code = splitCode(utf8);
    if (!code)
        return std::nullopt;
    if (equalIgnoringCase(code->authority, kLocalAuthority)) {
        code->authority = kLocalAuthority;
        return code;
    }
    const auto& authorities = catalogAuthorities();
    const auto found = std::ranges::find_if(
        authorities, [&](const std::string& authority) { return equalIgnoringCase(authority, code->authority); });
    if (found == authorities.end())
        return std::nullopt;
    code->authority = *found;
    return code;
}

} // namespace Embedded
