#include "embedded/spatial_reference/catalog/catalog_search.h"

#include <algorithm>
#include <sstream>
#include <tuple>

#include "embedded/spatial_reference/catalog/catalog_order.h"

namespace Embedded {
namespace {

/// How well an entry matches the text, the best first.
enum class Match { exactCode, exactName, nameBegins, rest };

struct Hit {
    Match match;
    CatalogOrder order;
    const CatalogEntry* entry;
};

std::vector<std::wstring> splitWords(const std::wstring& text)
{
    std::wistringstream stream(text);
    std::vector<std::wstring> words;
    for (std::wstring word; stream >> word;)
        words.push_back(word);
    return words;
}

class Matcher {
public:
    explicit Matcher(const CatalogQuery& query)
        : query_(query),
          text_(searchForm(query.text)),
          words_(splitWords(text_)),
          authority_(searchForm(query.authority))
    {
    }

    std::optional<Match> match(const CatalogEntry& entry) const
    {
        if (!isWanted(entry))
            return std::nullopt;
        const std::wstring code = searchForm(entry.code);
        const std::wstring name = searchForm(entry.name);
        const bool all = std::ranges::all_of(words_, [&](const std::wstring& word) {
            return code.find(word) != std::wstring::npos || name.find(word) != std::wstring::npos;
        });
        return all ? std::optional(rank(code, name)) : std::nullopt;
    }

private:
    bool isWanted(const CatalogEntry& entry) const
    {
        return (query_.includesDeprecated || !entry.deprecated) && (!query_.kind || *query_.kind == entry.kind) &&
               (authority_.empty() || searchForm(authorityOf(entry.code)) == authority_);
    }

    /// The number alone counts as the whole code.
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
            hits.push_back({*match, catalogOrder(entry.code), &entry});
    }
    std::ranges::stable_sort(hits, {}, [](const Hit& hit) { return std::tie(hit.match, hit.order); });
    if (query.limit != 0 && hits.size() > query.limit)
        hits.resize(query.limit);
    std::vector<CatalogEntry> entries;
    for (const Hit& hit : hits)
        entries.push_back(*hit.entry);
    return entries;
}

} // namespace Embedded
