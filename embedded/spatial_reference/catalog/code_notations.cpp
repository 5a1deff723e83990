#include "embedded/spatial_reference/catalog/code_notations.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>

#include "embedded/base/case_folding.h"
#include "embedded/base/parse_number.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_list.h"

namespace Embedded {
namespace {

struct Notation {
    std::wstring_view beginning; // in lower case
    wchar_t separator;           // between the authority, the version and the code
};
constexpr std::array kNotations{
    Notation{L"urn:ogc:def:crs:", L':'},
    Notation{L"urn:x-ogc:def:crs:", L':'},
    Notation{L"http://www.opengis.net/def/crs/", L'/'},
    Notation{L"https://www.opengis.net/def/crs/", L'/'},
};

/// The code in "AUTHORITY:version:CODE".
std::optional<std::wstring> codeIn(std::wstring_view parts, wchar_t separator)
{
    const auto first = parts.find(separator);
    const auto last = parts.rfind(separator);
    if (first == std::wstring_view::npos || first == 0 || first == last || last + 1 == parts.size())
        return std::nullopt;
    return std::wstring(parts.substr(0, first)) + L':' + std::wstring(parts.substr(last + 1));
}

std::wstring codeWithNumber(std::wstring_view number)
{
    const std::string wanted = utf8FromWide(number);
    std::set<std::wstring> codes;
    forEachListedCode([&](const ListedCode& listed) {
        if (listed.code == wanted)
            codes.insert(listed.text());
    });
    const std::wstring ofEpsg = L"EPSG:" + std::wstring(number);
    if (codes.contains(ofEpsg))
        return ofEpsg;
    return codes.size() == 1 ? *codes.begin() : std::wstring(number);
}

} // namespace

std::wstring codeFromNotation(std::wstring_view text)
{
    for (const Notation& notation : kNotations) {
        if (!toLowerAscii(text).starts_with(notation.beginning))
            continue;
        if (auto code = codeIn(text.substr(notation.beginning.size()), notation.separator))
            return *std::move(code);
    }
    return std::wstring(text);
}

std::wstring plainCode(std::wstring_view text)
{
    const bool isNumber = !text.empty() && std::ranges::all_of(text, isDigit<wchar_t>);
    return isNumber ? codeWithNumber(text) : codeFromNotation(text);
}

} // namespace Embedded
