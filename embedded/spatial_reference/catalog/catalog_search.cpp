#include "embedded/spatial_reference/catalog/catalog_search.h"

#include <algorithm>
#include <tuple>

#include "embedded/spatial_reference/catalog/catalog_order.h"
#include "embedded/spatial_reference/catalog/catalog_words.h"
#include "embedded/spatial_reference/catalog/code_notations.h"

namespace Embedded {
namespace {

/// How well an entry matches the text, the best first.
enum class Match { exactCode, exactName, wholeWords, beginningsOfWords, rest };

struct Hit {
    Match match;
    bool deprecated;
    CatalogOrder order;
    const CatalogEntry* entry;
};

Match rankOf(WordMatch worst)
{
    switch (worst) {
    case WordMatch::whole:
        return Match::wholeWords;
    case WordMatch::beginning:
        return Match::beginningsOfWords;
    default:
        return Match::rest;
    }
}

class Matcher {
public:
    explicit Matcher(const CatalogQuery& query)
        : query_(query),
          text_(searchForm(codeFromNotation(searchForm(query.text)))),
          words_(splitAtBlanks(text_)),
          authority_(searchForm(query.authority))
    {
    }

    std::optional<Match> match(const CatalogEntry& entry) const
    {
        if (!isWanted(entry))
            return std::nullopt;
        const std::wstring code = searchForm(entry.code);
        const std::wstring name = searchForm(entry.name);
        const WordMatch worst = worstMatch(code, name);
        if (worst == WordMatch::none || (query_.ignoresInside && worst == WordMatch::inside))
            return std::nullopt;
        if (text_ == code || text_ == numberOf(code))
            return Match::exactCode;
        return text_ == name ? Match::exactName : rankOf(worst);
    }

private:
    bool isWanted(const CatalogEntry& entry) const
    {
        return (query_.includesDeprecated || !entry.deprecated) && (!query_.kind || *query_.kind == entry.kind) &&
               (authority_.empty() || searchForm(authorityOf(entry.code)) == authority_);
    }

    WordMatch worstMatch(const std::wstring& code, const std::wstring& name) const
    {
        WordMatch worst = WordMatch::whole;
        for (const std::wstring& word : words_) {
            worst = std::max(worst, std::min(matchWord(code, word), matchWord(name, word)));
            if (worst == WordMatch::none)
                break;
        }
        return worst;
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
            hits.push_back({*match, entry.deprecated, catalogOrder(entry.code), &entry});
    }
    std::ranges::stable_sort(hits, {}, [](const Hit& hit) { return std::tie(hit.match, hit.deprecated, hit.order); });
    if (query.limit != 0 && hits.size() > query.limit)
        hits.resize(query.limit);
    std::vector<CatalogEntry> entries;
    for (const Hit& hit : hits)
        entries.push_back(*hit.entry);
    return entries;
}

} // namespace Embedded
