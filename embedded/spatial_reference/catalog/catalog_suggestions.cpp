#include "embedded/spatial_reference/catalog/catalog_suggestions.h"

#include <algorithm>
#include <tuple>

#include "embedded/base/edit_distance.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"
#include "embedded/spatial_reference/catalog/catalog_search.h"

namespace Embedded {
namespace {

/// A swap of neighbours is the commonest slip.
constexpr EditCosts kCosts{.edit = 3, .swap = 2};

struct Suggestion {
    std::size_t distance;
    bool deprecated;
    CatalogOrder order;
    const CatalogEntry* entry;
};

/// One or two slips. A code that is further away is not a misspelling.
std::size_t largestDistance(std::wstring_view text)
{
    return (text.size() <= 4 ? 1 : 2) * kCosts.edit;
}

/// The right number under another authority is nearer than any number that differs.
std::size_t distance(std::wstring_view text, std::wstring_view code)
{
    if (numberOf(text) != numberOf(code))
        return kCosts.edit + editDistance(text, code, kCosts);
    if (authorityOf(text).empty())
        return 0;
    return std::min(kCosts.edit, editDistance(authorityOf(text), authorityOf(code), kCosts));
}

/// Only codes of about the same length can be near.
bool isComparable(std::wstring_view text, std::wstring_view code)
{
    return text.size() <= code.size() + 3 && code.size() <= text.size() + 6;
}

std::vector<CatalogEntry> suggestNames(std::wstring_view text, std::size_t limit)
{
    return searchCatalog({.text = std::wstring(text), .limit = limit});
}

} // namespace

std::vector<CatalogEntry> suggestCodes(std::wstring_view code, std::size_t limit)
{
    const std::wstring text = searchForm(code);
    if (text.empty() || limit == 0)
        return {};
    std::vector<Suggestion> near;
    for (const CatalogEntry& entry : catalogEntries()) {
        if (!isComparable(text, entry.code))
            continue;
        const std::size_t cost = distance(text, searchForm(entry.code));
        if (cost <= kCosts.edit + largestDistance(numberOf(text)))
            near.push_back({cost, entry.deprecated, catalogOrder(entry.code), &entry});
    }
    std::ranges::sort(near, {}, [](const Suggestion& s) { return std::tie(s.distance, s.deprecated, s.order); });
    std::vector<CatalogEntry> entries;
    near.resize(std::min(near.size(), limit));
    for (const Suggestion& suggestion : near)
        entries.push_back(*suggestion.entry);
    return entries.empty() ? suggestNames(code, limit) : entries;
}

} // namespace Embedded
