#include <algorithm>
#include <tuple>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"

namespace Embedded {
namespace {

struct Suggestion {
    std::size_t distance;
    bool deprecated;
    CatalogOrder order;
    const CatalogEntry* entry;
};

/// A slip or two; what is further away is no misspelling.
std::size_t furthest(std::wstring_view text)
{
    return (text.size() <= 4 ? 1 : 2) * kEditCost;
}

/// The right number under another authority is nearer than any number that differs.
std::size_t distanceOf(std::wstring_view folded, std::wstring_view code)
{
    if (numberOf(folded) != numberOf(code))
        return kEditCost + editDistance(folded, code);
    return authorityOf(folded).empty() ? 0 : std::min(kEditCost, editDistance(authorityOf(folded), authorityOf(code)));
}

/// Codes are shorter than names by far, so only those of about the same length can be near.
bool isComparable(std::wstring_view folded, std::wstring_view code)
{
    return folded.size() <= code.size() + 3 && code.size() <= folded.size() + 6;
}

std::vector<CatalogEntry> suggestNames(std::wstring_view text, std::size_t limit)
{
    return searchCatalog(
        {.text = std::wstring(text), .kind = {}, .authority = {}, .deprecated = false, .limit = limit});
}

} // namespace

std::vector<CatalogEntry> suggestCodes(std::wstring_view code, std::size_t limit)
{
    const std::wstring folded = foldCase(code);
    if (folded.empty() || limit == 0)
        return {};
    std::vector<Suggestion> near;
    for (const CatalogEntry& entry : catalogEntries()) {
        if (!isComparable(folded, entry.code))
            continue;
        const auto distance = distanceOf(folded, foldCase(entry.code));
        if (distance <= kEditCost + furthest(numberOf(folded)))
            near.push_back({distance, entry.deprecated, catalogOrderOf(entry.code), &entry});
    }
    std::ranges::sort(near, {}, [](const Suggestion& s) { return std::tie(s.distance, s.deprecated, s.order); });
    std::vector<CatalogEntry> found;
    near.resize(std::min(near.size(), limit));
    for (const Suggestion& suggestion : near)
        found.push_back(*suggestion.entry);
    return found.empty() ? suggestNames(code, limit) : found;
}

} // namespace Embedded
