#include "embedded/spatial_reference/projjson/catalog_code.h"

#include <algorithm>

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

} // namespace Embedded
