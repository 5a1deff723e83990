#include "embedded/spatial_reference/catalog/catalog_order.h"

#include <algorithm>
#include <cwctype>
#include <limits>
#include <utility>
#include <vector>

namespace Embedded {
namespace {

bool isBlank(wchar_t character)
{
    return std::iswspace(static_cast<std::wint_t>(character)) != 0;
}

wchar_t lower(wchar_t character)
{
    return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(character)));
}

bool isDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

} // namespace

std::wstring foldCase(std::wstring_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    std::wstring folded(text);
    std::ranges::transform(folded, folded.begin(), lower);
    return folded;
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

CatalogOrder catalogOrderOf(std::wstring_view code)
{
    const auto number = numberOf(code);
    const bool isNumber = !number.empty() && number.size() <= 18 && std::ranges::all_of(number, isDigit);
    return {.authority = std::wstring(authorityOf(code)),
            .number = isNumber ? std::stoull(std::wstring(number)) : std::numeric_limits<std::uint64_t>::max(),
            .code = std::wstring(number)};
}

std::size_t editDistance(std::wstring_view left, std::wstring_view right)
{
    std::vector<std::size_t> beforeLast(right.size() + 1), last(right.size() + 1), row(right.size() + 1);
    for (std::size_t column = 0; column <= right.size(); ++column)
        row[column] = column * kEditCost;
    for (std::size_t line = 1; line <= left.size(); ++line) {
        beforeLast = std::exchange(last, row);
        row[0] = line * kEditCost;
        for (std::size_t column = 1; column <= right.size(); ++column) {
            const bool same = left[line - 1] == right[column - 1];
            row[column] = std::min(
                {last[column] + kEditCost, row[column - 1] + kEditCost, last[column - 1] + (same ? 0 : kEditCost)});
            const bool swapped =
                line > 1 && column > 1 && left[line - 1] == right[column - 2] && left[line - 2] == right[column - 1];
            if (swapped)
                row[column] = std::min(row[column], beforeLast[column - 2] + kSwapCost);
        }
    }
    return row.back();
}

} // namespace Embedded
