// Checks every system of the catalog.
#include <algorithm>
#include <cstdio>
#include <map>
#include <set>

#include <proj.h>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;
using Embedded::CatalogEntry;

/// The longest stream or text so far, and the code of its definition.
struct Longest {
    std::size_t length = 0;
    std::wstring code;

    void update(std::size_t candidate, const std::wstring& candidateCode)
    {
        if (candidate > length) {
            length = candidate;
            code = candidateCode;
        }
    }
};

/// The tests check one of so many systems.
constexpr std::size_t kStride = ORVEL_CATALOG_STRIDE;

/// One of `slices` equal parts of the checked entries. Slow tests check the slices in parallel.
std::vector<CatalogEntry> sliceOfCatalog(std::size_t slice, std::size_t slices)
{
    std::vector<CatalogEntry> entries;
    for (std::size_t index = slice * kStride; index < Embedded::catalogEntries().size(); index += slices * kStride)
        entries.push_back(Embedded::catalogEntries()[index]);
    return entries;
}

constexpr std::size_t kSlices = 4;

class WholeCatalog : public SpatialReferenceTest {
protected:
    template <typename Visitor>
    static std::size_t forEachLiveSystem(Visitor visit, std::size_t slice = 0, std::size_t slices = 1)
    {
        std::size_t count = 0;
        for (const CatalogEntry& entry : sliceOfCatalog(slice, slices)) {
            if (entry.deprecated)
                continue;
            const auto definition = loadSystem(entry.code);
            if (definition) {
                visit(entry, *definition);
                ++count;
            }
        }
        return count;
    }

    static bool isProjectedOrGeographic(const CatalogEntry& entry)
    {
        return entry.kind == kindProjected || entry.kind == kindGeographic;
    }
};

TEST_F(WholeCatalog, EverySystemDatumAndEllipsoidFitsAStreamAndIsRestored)
{
    Longest longest;
    std::set<std::wstring> partsSeen;
    std::size_t projectedAndGeographic = 0;
    const auto expectRoundTrip = [&](const DefinitionBase& definition) {
        const Bytes bytes = writeStream({&definition});
        ASSERT_FALSE(bytes.empty()) << codeOf(definition);
        longest.update(bytes.size(), codeOf(definition));
        const auto copies = readStream(bytes);
        ASSERT_TRUE(copies) << codeOf(definition);
        ASSERT_EQ(copies->GetCount(), 1);
        EXPECT_EQ(codeOf(*copies->GetItem(0)), codeOf(definition));
        EXPECT_EQ(serialize(*copies->GetItem(0), false), serialize(definition, false)) << codeOf(definition);
    };
    const std::size_t count = forEachLiveSystem([&](const CatalogEntry& entry, const auto& definition) {
        projectedAndGeographic += isProjectedOrGeographic(entry) ? 1U : 0U;
        expectRoundTrip(definition);
        if (isDatumBased(definition) && partsSeen.insert(datumCodeOf(definition)).second)
            expectRoundTrip(*datumOf(definition));
        if (kindOf(definition) != kindNotEarthReferenced && partsSeen.insert(ellipsoidCodeOf(definition)).second)
            expectRoundTrip(*ellipsoidOf(definition));
    });
    std::printf("%zu live systems, %zu of them projected or geographic, compound ones included; %zu datums and "
                "ellipsoids; longest stream: %zu bytes, %ls\n",
                count, projectedAndGeographic, partsSeen.size(), longest.length, longest.code.c_str());
    EXPECT_GT(projectedAndGeographic, 9900U / kStride - 100U);
    EXPECT_LE(longest.length, 1024U);
}

class SliceOfCatalog : public WholeCatalog, public testing::WithParamInterface<std::size_t> {};

TEST_P(SliceOfCatalog, EveryTextFitsItsLimitAndIsRestored)
{
    Longest longest;
    const std::size_t count = forEachLiveSystem(
        [&](const CatalogEntry& entry, const auto& definition) {
            const Bytes text = serialize(definition, true);
            ASSERT_FALSE(text.empty()) << entry.code;
            longest.update(text.size(), entry.code);
            Holder<DefinitionBaseArray> copies;
            ASSERT_EQ(deserialize(text, copies), statusOk) << entry.code;
            const int expected = kindOf(definition) == kindNotEarthReferenced ? 1 : isDatumBased(definition) ? 3 : 2;
            EXPECT_EQ(copies->GetCount(), expected) << entry.code;
            EXPECT_EQ(serialize(*copies->GetItem(0), true), text) << entry.code;
        },
        GetParam(), kSlices);
    std::printf("%zu live systems; longest text with datum and ellipsoid: %zu bytes, %ls\n", count, longest.length,
                longest.code.c_str());
    EXPECT_LE(longest.length, 65536U);
}

INSTANTIATE_TEST_SUITE_P(Slices, SliceOfCatalog, testing::Range(std::size_t{0}, kSlices));

TEST_F(WholeCatalog, EveryEntryOfTheListAgreesWithTheLoadedSystem)
{
    for (const CatalogEntry& entry : sliceOfCatalog(0, 1)) {
        const auto definition = loadSystem(entry.code);
        ASSERT_TRUE(definition);
        EXPECT_EQ(codeOf(*definition), entry.code);
        EXPECT_EQ(nameOf(*definition), entry.name) << entry.code;
        EXPECT_EQ(kindOf(*definition), entry.kind) << entry.code;
        EXPECT_EQ(ellipsoidCodeOf(*definition).empty(), entry.kind == kindNotEarthReferenced) << entry.code;
    }
}

/// Compares with the WKT that PROJ itself writes. A definition has no area and scope of use, no remark and no mark of a
/// deprecated code, since these describe the entry of the catalog.
class WktOfTheCatalog : public WholeCatalog {
protected:
    WktOfTheCatalog() : context_(proj_context_create()) { proj_log_level(context_.get(), PJ_LOG_NONE); }

    std::wstring projWkt(const std::wstring& code, PJ_WKT_TYPE type) const
    {
        const std::string utf8 = Embedded::utf8FromWide(code);
        const auto colon = utf8.find(':');
        const std::unique_ptr<PJ, Release> object(
            proj_create_from_database(context_.get(), utf8.substr(0, colon).c_str(), utf8.substr(colon + 1).c_str(),
                                      PJ_CATEGORY_CRS, 0, nullptr));
        const char* const options[] = {"MULTILINE=NO", nullptr};
        const char* text = object ? proj_as_wkt(context_.get(), object.get(), type, options) : nullptr;
        return text ? withoutUsage(Embedded::wideFromUtf8(text)) : std::wstring();
    }

private:
    struct Release {
        void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
        void operator()(PJ* object) const { proj_destroy(object); }
    };

    /// Skips nested nodes, and brackets in texts.
    static std::size_t endOfNode(const std::wstring& text, std::size_t open)
    {
        int depth = 0;
        bool quoted = false;
        for (std::size_t index = open; index < text.size(); ++index) {
            quoted ^= text[index] == L'"';
            depth += quoted ? 0 : (text[index] == L'[') - (text[index] == L']');
            if (depth == 0 && !quoted)
                return index + 1;
        }
        return text.size();
    }

    static std::wstring withoutUsage(std::wstring text)
    {
        for (const std::wstring node : {L",USAGE[", L",SCOPE[", L",AREA[", L",BBOX[", L",REMARK["}) {
            for (auto place = text.find(node); place != std::wstring::npos; place = text.find(node))
                text.erase(place, endOfNode(text, place + node.size() - 1) - place);
        }
        constexpr std::wstring_view kMark = L" (deprecated)";
        for (auto place = text.find(kMark); place != std::wstring::npos; place = text.find(kMark))
            text.erase(place, kMark.size());
        return text;
    }

    std::unique_ptr<PJ_CONTEXT, Release> context_;
};

TEST_F(WktOfTheCatalog, EveryWktEqualsTheOneOfProj)
{
    std::size_t wkt1 = 0;
    std::size_t ensembles = 0;
    std::map<int, std::size_t> wkt2; // of live systems, by their kind
    for (const CatalogEntry& entry : sliceOfCatalog(0, 1)) {
        if (entry.code.starts_with(L"LOCAL:"))
            continue;
        const auto definition = loadSystem(entry.code);
        std::wstring expected = projWkt(entry.code, PJ_WKT1_GDAL);
        const bool inexact = expected.empty();
        if (inexact)
            expected = projWkt(entry.code, PJ_WKT2_2019);
        const std::wstring actual = writeWkt(*definition, inexact ? statusInexact : statusOk);
        ++(inexact && !entry.deprecated ? wkt2[entry.kind] : wkt1);
        if (inexact && expected.find(L"ENSEMBLE[") != std::wstring::npos) {
            EXPECT_EQ(actual.find(L"ENSEMBLE["), std::wstring::npos) << entry.code;
            ++ensembles; // the module writes its datum instead
        } else {
            EXPECT_EQ(actual, expected) << entry.code;
        }
    }
    std::printf(
        "%zu as WKT 1 or deprecated; live ones as WKT 2 alone: %zu geographic, %zu projected; %zu of an ensemble\n",
        wkt1, wkt2[kindGeographic], wkt2[kindProjected], ensembles);
    if (isReferenceCatalog() && kStride == 1) {
        EXPECT_EQ(wkt2[kindGeographic], 258U);
        EXPECT_EQ(wkt2[kindProjected], 49U);
    }
}

TEST_F(WholeCatalog, EveryLiveOperationLoadsByItsCode)
{
    std::size_t transformations = 0;
    std::size_t paths = 0;
    const auto load = [](const std::string& code, auto*& definition) {
        using Definition = std::remove_reference_t<decltype(*definition)>;
        EXPECT_EQ(Definition::Load(Embedded::wideFromUtf8(code).c_str(), definition), statusOk) << code;
        const Holder<Definition> held(definition);
        return std::size_t{held ? 1U : 0U};
    };
    PROJ_STRING_LIST authorities = proj_get_authorities_from_database(nullptr);
    for (auto authority = authorities; authority && *authority; ++authority) {
        for (const PJ_TYPE type : {PJ_TYPE_TRANSFORMATION, PJ_TYPE_CONCATENATED_OPERATION}) {
            PROJ_STRING_LIST codes = proj_get_codes_from_database(nullptr, *authority, type, 0);
            for (auto code = codes; code && *code; ++code) {
                const std::string text = std::string(*authority) + ':' + *code;
                GeodeticTransformationDefinition* transformation = nullptr;
                GeodeticPathDefinition* path = nullptr;
                (type == PJ_TYPE_TRANSFORMATION ? transformations : paths) +=
                    type == PJ_TYPE_TRANSFORMATION ? load(text, transformation) : load(text, path);
            }
            proj_string_list_destroy(codes);
        }
    }
    proj_string_list_destroy(authorities);
    std::printf("%zu transformations, %zu paths\n", transformations, paths);
    if (isReferenceCatalog()) {
        EXPECT_EQ(transformations + paths, 3610U);
    }
}

} // namespace
