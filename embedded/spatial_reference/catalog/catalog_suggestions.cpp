#include "embedded/spatial_reference/catalog/catalog_suggestions.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "embedded/base/case_folding.h"
#include "embedded/base/edit_distance.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_list.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"
#include "embedded/spatial_reference/catalog/catalog_search.h"
#include "embedded/spatial_reference/catalog/catalog_words.h"
#include "embedded/spatial_reference/catalog/code_notations.h"

namespace Embedded {
namespace {

/// A swap of neighbours is the commonest slip.
constexpr EditCosts kCosts{.edit = 3, .swap = 2};

struct Suggestion {
    std::size_t distance;
    bool deprecated;
    CatalogOrder order;
    std::wstring code;
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

using CharacterCounts = std::array<int, 128>;

void count(std::string_view text, int number, CharacterCounts& counts)
{
    for (const char character : text)
        counts[static_cast<unsigned char>(toLowerAscii(character))] += number;
}

/// How many characters one of the texts has and the other lacks, blanks apart. No fewer have to be edited, since a swap
/// changes none.
std::size_t fewestEdits(CharacterCounts counts, const ListedCode& listed)
{
    count(listed.authority, -1, counts);
    count(":", -1, counts);
    count(listed.code, -1, counts);
    counts[' '] = 0;
    std::size_t missing = 0;
    std::size_t added = 0;
    for (const int number : counts)
        (number > 0 ? missing : added) += static_cast<std::size_t>(std::abs(number));
    return std::max(missing, added);
}

/// Collects the codes that are near to a text.
class NearCodes {
public:
    explicit NearCodes(std::wstring text)
        : text_(std::move(text)), utf8_(utf8FromWide(text_)), largest_(largestDistance(numberOf(text_)))
    {
        if (isAscii(utf8_))
            count(utf8_, 1, counts_.emplace());
    }

    void compare(const ListedCode& listed)
    {
        if (!mayBeNear(listed))
            return;
        std::wstring code = listed.text();
        if (!isComparable(text_, code))
            return;
        const std::size_t cost = distance(text_, searchForm(code));
        if (cost <= kCosts.edit + largest_)
            near_.push_back({cost, listed.deprecated, catalogOrder(code), std::move(code)});
    }

    /// The best come first.
    std::vector<Suggestion> sorted()
    {
        std::ranges::sort(near_, {}, [](const Suggestion& s) { return std::tie(s.distance, s.deprecated, s.order); });
        return std::move(near_);
    }

private:
    /// Spares most codes the table of distances.
    bool mayBeNear(const ListedCode& listed) const
    {
        if (!counts_ || !isAscii(listed.authority) || !isAscii(listed.code))
            return true;
        return utf8_.ends_with(toLowerAscii(listed.code)) || fewestEdits(*counts_, listed) * kCosts.edit <= largest_;
    }

    std::wstring text_;
    std::string utf8_;
    std::size_t largest_;
    std::optional<CharacterCounts> counts_; // of a text that is ASCII
    std::vector<Suggestion> near_;
};

/// The systems whose names have the words of the text, or its words when slips in them are mended.
std::vector<CatalogEntry> suggestNames(std::wstring_view text, std::size_t limit)
{
    auto entries = searchCatalog({.text = std::wstring(text), .ignoresInside = true, .limit = limit});
    if (!entries.empty())
        return entries;
    WordCorrection correction;
    for (const CatalogEntry& entry : catalogEntries())
        if (!entry.deprecated)
            correction.learn(entry.name);
    for (const std::wstring& corrected : correction.correct(text, limit)) {
        for (CatalogEntry& entry : searchCatalog({.text = corrected, .ignoresInside = true, .limit = limit})) {
            if (entries.size() < limit && std::ranges::find(entries, entry.code, &CatalogEntry::code) == entries.end())
                entries.push_back(std::move(entry));
        }
    }
    return entries;
}

} // namespace

std::vector<CatalogEntry> suggestCodes(std::wstring_view code, std::size_t limit)
{
    const std::wstring text = searchForm(codeFromNotation(searchForm(code)));
    if (text.empty() || limit == 0)
        return {};
    NearCodes near(text);
    forEachListedCode([&near](const ListedCode& listed) { near.compare(listed); });
    std::vector<CatalogEntry> entries;
    for (const Suggestion& suggestion : near.sorted()) {
        if (entries.size() == limit)
            break;
        if (std::ranges::find(entries, suggestion.code, &CatalogEntry::code) != entries.end())
            continue; // a list may have it twice
        if (std::optional<CatalogEntry> entry = listedEntry(suggestion.code))
            entries.push_back(*std::move(entry));
    }
    if (entries.empty())
        entries = suggestNames(text, limit);
    std::erase_if(entries, [code](const CatalogEntry& entry) { return entry.code == code; }); // it cannot be loaded
    return entries;
}

} // namespace Embedded
