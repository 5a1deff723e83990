#include "embedded/spatial_reference/catalog/catalog_order.h"

#include <algorithm>
#include <limits>

#include "embedded/base/case_folding.h"

namespace Embedded {
namespace {

bool isDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

} // namespace

std::wstring searchForm(std::wstring_view text)
{
    constexpr std::wstring_view kBlanks = L" \t\r\n\v\f\u00A0";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos)
        return {};
    return toLowerCase(text.substr(first, text.find_last_not_of(kBlanks) - first + 1));
}

std::wstring_view authorityOf(std::wstring_view code)
{
    const auto colon = code.find(L':');
    return colon == std::wstring_view::npos ? std::wstring_view() : code.substr(0, colon);
}

std::wstring_view numberOf(std::wstring_view code)
{
    const auto colon = code.find(L':');
    return colon == std::wstring_view::npos ? code : code.substr(colon + 1);
}

CatalogOrder catalogOrder(std::wstring_view code)
{
    const auto number = numberOf(code);
    const bool isNumber = !number.empty() && number.size() <= 18 && std::ranges::all_of(number, isDigit);
    return {.authority = std::wstring(authorityOf(code)),
            .number = isNumber ? std::stoull(std::wstring(number)) : std::numeric_limits<std::uint64_t>::max(),
            .code = std::wstring(number)};
}

} // namespace Embedded
