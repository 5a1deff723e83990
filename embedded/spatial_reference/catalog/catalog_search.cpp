#include <algorithm>
#include <cwctype>
#include <ranges>
#include <sstream>
#include <tuple>
#include <utility>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"

namespace Embedded {
namespace {

/// How well an entry answers the text; the smaller the better.
enum class Match { exactCode, exactName, nameBegins, rest };

struct Hit {
    Match match;
    CatalogOrder order;
    const CatalogEntry* entry;
};

std::vector<std::wstring> wordsOf(const std::wstring& folded)
{
    std::wistringstream stream(folded);
    std::vector<std::wstring> words;
    for (std::wstring word; stream >> word;)
        words.push_back(word);
    return words;
}

class Matcher {
public:
    explicit Matcher(const CatalogQuery& query)
        : query_(query), text_(foldCase(query.text)), words_(wordsOf(text_)), authority_(foldCase(query.authority))
    {
    }

    std::optional<Match> match(const CatalogEntry& entry) const
    {
        if (!isWanted(entry))
            return std::nullopt;
        const std::wstring code = foldCase(entry.code);
        const std::wstring name = foldCase(entry.name);
        const bool all = std::ranges::all_of(words_, [&](const std::wstring& word) {
            return code.find(word) != std::wstring::npos || name.find(word) != std::wstring::npos;
        });
        return all ? std::optional(rank(code, name)) : std::nullopt;
    }

private:
    bool isWanted(const CatalogEntry& entry) const
    {
        return (query_.deprecated || !entry.deprecated) && (!query_.kind || *query_.kind == entry.kind) &&
               (authority_.empty() || foldCase(authorityOf(entry.code)) == authority_);
    }

    /// The number alone is as exact as the whole code.
    Match rank(const std::wstring& code, const std::wstring& name) const
    {
        if (text_ == code || text_ == numberOf(code))
            return Match::exactCode;
        if (text_ == name)
            return Match::exactName;
        return name.starts_with(text_) ? Match::nameBegins : Match::rest;
    }

    const CatalogQuery& query_;
    std::wstring text_;
    std::vector<std::wstring> words_;
    std::wstring authority_;
};

} // namespace

std::vector<CatalogEntry> searchCatalog(const CatalogQuery& query)
{
    const Matcher matcher(query);
    std::vector<Hit> hits;
    for (const CatalogEntry& entry : catalogEntries()) {
        if (const auto match = matcher.match(entry))
            hits.push_back({*match, catalogOrderOf(entry.code), &entry});
    }
    std::ranges::stable_sort(hits, {}, [](const Hit& hit) { return std::tie(hit.match, hit.order); });
    if (query.limit != 0 && hits.size() > query.limit)
        hits.resize(query.limit);
    std::vector<CatalogEntry> found;
    for (const Hit& hit : hits)
        found.push_back(*hit.entry);
    return found;
}

} // namespace Embedded
