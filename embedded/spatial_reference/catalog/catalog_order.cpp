#include "embedded/spatial_reference/catalog/catalog_order.h"

#include <algorithm>
#include <limits>

#include "embedded/base/case_folding.h"
#include "embedded/base/parse_number.h"
#include "embedded/base/trim.h"

namespace Embedded {

std::wstring searchForm(std::wstring_view text)
{
    return toLowerCase(trim(text, L" \t\r\n\v\f\u00A0"));
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
    const bool isNumber = !number.empty() && number.size() <= 18 && std::ranges::all_of(number, isDigit<wchar_t>);
    return {.authority = std::wstring(authorityOf(code)),
            .number = isNumber ? std::stoull(std::wstring(number)) : std::numeric_limits<std::uint64_t>::max(),
            .code = std::wstring(number)};
}

} // namespace Embedded
