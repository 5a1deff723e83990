#include <algorithm>
#include <set>

#include "embedded/spatial_reference/catalog/catalog_search.h"
#include "embedded/spatial_reference/catalog/catalog_suggestions.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;
using Embedded::catalogEntries;
using Embedded::CatalogEntry;
using Embedded::CatalogQuery;
using Embedded::catalogVersion;
using Embedded::findCatalogEntry;
using Embedded::projVersion;
using Embedded::replacementCodes;
using Embedded::searchCatalog;
using Embedded::suggestCodes;

class CatalogSearch : public SpatialReferenceTest {
protected:
    static std::vector<std::wstring> codes(const std::vector<CatalogEntry>& entries)
    {
        std::vector<std::wstring> result;
        for (const CatalogEntry& entry : entries)
            result.push_back(entry.code);
        return result;
    }

    static CatalogQuery query(const std::wstring& text, std::size_t limit = 0)
    {
        CatalogQuery result;
        result.text = text;
        result.limit = limit;
        return result;
    }
};

using Codes = std::vector<std::wstring>;

TEST_F(CatalogSearch, EachSystemIsListedOnce)
{
    std::set<std::wstring> seen;
    for (const CatalogEntry& entry : catalogEntries())
        EXPECT_TRUE(seen.insert(entry.code).second) << entry.code;
}

TEST_F(CatalogSearch, TheListHasTheSystemsOfTheReferenceCatalog)
{
    if (!isReferenceCatalog())
        GTEST_SKIP() << "the numbers are those of one version of the catalog";
    const auto live = std::ranges::count(catalogEntries(), false, &CatalogEntry::deprecated);
    EXPECT_EQ(live, 10906 + 3); // with the local planes
    EXPECT_EQ(std::ranges::count(catalogEntries(), kindNotEarthReferenced, &CatalogEntry::kind), 3);
    EXPECT_EQ(std::ranges::count(catalogEntries(), 0, &CatalogEntry::kind), 0);
}

TEST_F(CatalogSearch, AnEntryDescribesItsSystem)
{
    const auto entry = findCatalogEntry(L"epsg:7415");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->code, L"EPSG:7415");
    EXPECT_EQ(entry->name, L"Amersfoort / RD New + NAP height");
    EXPECT_EQ(entry->kind, kindProjected);
    EXPECT_FALSE(entry->deprecated);
    EXPECT_TRUE(entry->areaOfUse.starts_with(L"Netherlands")) << entry->areaOfUse;
}

TEST_F(CatalogSearch, AnEntryIsFoundOnlyForASystemThatCanBeLoaded)
{
    EXPECT_FALSE(findCatalogEntry(L"EPSG:5773")); // vertical
    EXPECT_FALSE(findCatalogEntry(L"EPSG:1"));
    EXPECT_FALSE(findCatalogEntry(L"4326"));
    EXPECT_FALSE(findCatalogEntry(L""));
    EXPECT_TRUE(findCatalogEntry(L"EPSG:3785")->deprecated);
    EXPECT_EQ(findCatalogEntry(L"Local:FOOT")->kind, kindNotEarthReferenced);
}

TEST_F(CatalogSearch, EveryWordOfTheQueryMustOccurInAnyCase)
{
    const auto results = searchCatalog(query(L"new AMERSFOORT  rd"));
    EXPECT_EQ(codes(results), (Codes{L"EPSG:7415", L"EPSG:28992"}));
    EXPECT_TRUE(searchCatalog(query(L"amersfoort nowhere")).empty());
}

TEST_F(CatalogSearch, AnExactCodeComesFirst)
{
    EXPECT_EQ(codes(searchCatalog(query(L"epsg:4326", 1))), Codes{L"EPSG:4326"});
    EXPECT_EQ(codes(searchCatalog(query(L"25832", 1))), Codes{L"EPSG:25832"});
    EXPECT_EQ(codes(searchCatalog(query(L" \tEPSG:25832 ", 1))), Codes{L"EPSG:25832"});
}

TEST_F(CatalogSearch, AnExactNameComesBeforeNamesWithItsWords)
{
    const auto results = searchCatalog(query(L"WGS 84"));
    ASSERT_GT(results.size(), 10U);
    const auto firstOther = std::ranges::find_if(results, [](const auto& entry) { return entry.name != L"WGS 84"; });
    EXPECT_GE(firstOther - results.begin(), 3); // two and three dimensions, geocentric
    EXPECT_TRUE(firstOther->name.starts_with(L"WGS 84"));
    EXPECT_TRUE(std::all_of(firstOther, results.end(), [](const auto& entry) { return entry.name != L"WGS 84"; }));
}

TEST_F(CatalogSearch, CodesAreOrderedByNumber)
{
    const auto results = searchCatalog(query(L"ETRS89 / UTM zone 3"));
    const auto place = [&](const wchar_t* code) {
        return std::ranges::find(results, code, &CatalogEntry::code) - results.begin();
    };
    EXPECT_LT(place(L"EPSG:3044"), place(L"EPSG:25830"));
    EXPECT_LT(place(L"EPSG:25830"), place(L"EPSG:25832"));
}

TEST_F(CatalogSearch, KindAuthorityAndLimitNarrowTheResult)
{
    CatalogQuery narrow = query(L"WGS 84");
    narrow.kind = kindGeocentric;
    narrow.authority = L"epsg";
    for (const CatalogEntry& entry : searchCatalog(narrow)) {
        EXPECT_EQ(entry.kind, kindGeocentric);
        EXPECT_TRUE(entry.code.starts_with(L"EPSG:")) << entry.code;
    }
    EXPECT_EQ(searchCatalog(narrow).front().code, L"EPSG:4978");
    narrow.limit = 2;
    EXPECT_EQ(searchCatalog(narrow).size(), 2U);
}

TEST_F(CatalogSearch, DeprecatedSystemsAreListedOnRequest)
{
    CatalogQuery old = query(L"EPSG:3785");
    EXPECT_TRUE(searchCatalog(old).empty());
    old.includesDeprecated = true;
    EXPECT_EQ(codes(searchCatalog(old)), Codes{L"EPSG:3785"});
}

TEST_F(CatalogSearch, ADeprecatedSystemNamesItsReplacement)
{
    EXPECT_EQ(replacementCodes(L"epsg:3785"), Codes{L"EPSG:3857"});
    EXPECT_TRUE(replacementCodes(L"EPSG:3857").empty());
    EXPECT_TRUE(replacementCodes(L"EPSG:1").empty());
    EXPECT_TRUE(replacementCodes(L"LOCAL:METRE").empty());
}

TEST_F(CatalogSearch, SwappedDigitsAreCorrectedBySuggestions)
{
    EXPECT_EQ(codes(suggestCodes(L"EPSG:25823", 1)), Codes{L"EPSG:25832"});
}

TEST_F(CatalogSearch, AMisspeltAuthorityIsCorrectedBySuggestions)
{
    EXPECT_EQ(codes(suggestCodes(L"ESPG:25832", 1)), Codes{L"EPSG:25832"});
    EXPECT_EQ(codes(suggestCodes(L"epg:4326", 1)), Codes{L"EPSG:4326"});
}

TEST_F(CatalogSearch, ABareNumberSuggestsTheAuthoritiesThatHaveIt)
{
    EXPECT_EQ(codes(suggestCodes(L"25832", 5)), Codes{L"EPSG:25832"});
    const auto both = codes(suggestCodes(L"9748", 5)); // a number of two authorities
    EXPECT_NE(std::ranges::find(both, L"EPSG:9748"), both.end());
    EXPECT_NE(std::ranges::find(both, L"ESRI:9748"), both.end());
}

TEST_F(CatalogSearch, ANameSuggestsItsSystem)
{
    EXPECT_EQ(suggestCodes(L"Amersfoort / RD New", 3).front().code, L"EPSG:28992");
}

TEST_F(CatalogSearch, UnrelatedTextsHaveNoSuggestions)
{
    EXPECT_TRUE(suggestCodes(L"", 5).empty());
    EXPECT_TRUE(suggestCodes(L"EPSG:25823", 0).empty());
    EXPECT_TRUE(suggestCodes(L"completely different words", 5).empty());
    EXPECT_LE(suggestCodes(L"EPSG:3", 4).size(), 4U);
}

TEST_F(CatalogSearch, VersionsOfProjAndTheCatalogAreKnown)
{
    EXPECT_TRUE(projVersion().starts_with("PROJ 9"));
    EXPECT_TRUE(catalogVersion().starts_with("EPSG v1"));
    const std::vector<Embedded::AuthorityVersion> versions = Embedded::catalogVersions();
    ASSERT_GE(versions.size(), 5U);
    EXPECT_EQ(versions.front().authority + " " + versions.front().version.value_or(""), catalogVersion());
}

} // namespace
