#include "orvelcs/drawing/catalog_suggestion.h"

#include <algorithm>
#include <set>
#include <vector>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_suggestions.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/suggestion.h"

namespace Orvelcs {
namespace {

std::vector<std::string> authorities()
{
    std::set<std::string> names;
    for (const Embedded::CatalogEntry& entry : Embedded::catalogEntries())
        names.insert(Embedded::utf8FromWide(entry.code.substr(0, entry.code.find(L':'))));
    return {names.begin(), names.end()};
}

bool sameIgnoringCase(const std::string& left, const std::string& right)
{
    const auto lowered = [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character | 0x20) : character;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char a, char b) { return lowered(a) == lowered(b); });
}

} // namespace

std::string nearestCodesClause(const std::wstring& code)
{
    constexpr std::size_t kMost = 5;
    std::vector<std::string> codes;
    for (const Embedded::CatalogEntry& entry : Embedded::suggestCodes(code, kMost))
        codes.push_back(Embedded::utf8FromWide(entry.code));
    return nearestClause(codes);
}

void checkAuthority(const std::wstring& authority)
{
    const std::string wanted = Embedded::utf8FromWide(authority);
    const std::vector<std::string> known = authorities();
    const bool found = std::any_of(known.begin(), known.end(),
                                   [&](const std::string& name) { return sameIgnoringCase(name, wanted); });
    if (!found)
        throw Failure(wanted, "the catalog has no such authority" + nearestClause(nearest(wanted, known)),
                      ExitStatus::nothingFound);
}

} // namespace Orvelcs
