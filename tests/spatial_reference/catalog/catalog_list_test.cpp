// The catalog's list of systems beside PROJ's own list.
#include <proj.h>

#include <map>
#include <memory>
#include <string>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "spatial_reference/spatial_reference_test.h"

namespace Tests {
namespace {

using Embedded::CatalogEntry;
using Embedded::wideFromUtf8;

struct ListRelease {
    void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
    void operator()(PROJ_CRS_INFO** list) const { proj_crs_info_list_destroy(list); }
};

/// The systems of PROJ's list by their codes, without vertical ones.
std::map<std::wstring, CatalogEntry> listedByProj()
{
    const std::unique_ptr<PJ_CONTEXT, ListRelease> context(proj_context_create());
    int count = 0;
    const std::unique_ptr<PROJ_CRS_INFO*, ListRelease> list(
        proj_get_crs_info_list_from_database(context.get(), nullptr, nullptr, &count));
    std::map<std::wstring, CatalogEntry> entries;
    for (int index = 0; index < count; ++index) {
        const PROJ_CRS_INFO& info = *list.get()[index];
        CatalogEntry entry;
        entry.code = wideFromUtf8(std::string(info.auth_name) + ':' + info.code);
        entry.name = wideFromUtf8(info.name);
        entry.deprecated = info.deprecated != 0;
        if (info.type != PJ_TYPE_VERTICAL_CRS)
            entries.emplace(entry.code, entry);
    }
    return entries;
}

class CatalogList : public SpatialReferenceTest {};

TEST_F(CatalogList, HasTheSystemsOfPROJWithTheirNames)
{
    std::map<std::wstring, CatalogEntry> expected = listedByProj();
    for (const CatalogEntry& entry : Embedded::catalogEntries()) {
        if (entry.code.starts_with(L"LOCAL:"))
            continue;
        const auto found = expected.find(entry.code);
        ASSERT_NE(found, expected.end()) << entry.code;
        EXPECT_EQ(entry.name, found->second.name) << entry.code;
        EXPECT_EQ(entry.deprecated, found->second.deprecated) << entry.code;
        expected.erase(found);
    }
    EXPECT_TRUE(expected.empty()) << expected.begin()->first;
}

TEST_F(CatalogList, SaysOfACompoundSystemWhatItsHorizontalPartIs)
{
    const auto kindOf = [](const wchar_t* code) {
        for (const CatalogEntry& entry : Embedded::catalogEntries()) {
            if (entry.code == code)
                return static_cast<int>(entry.kind);
        }
        return 0;
    };
    EXPECT_EQ(kindOf(L"EPSG:7415"), kindProjected);
    EXPECT_EQ(kindOf(L"EPSG:9707"), kindGeographic);
    EXPECT_EQ(kindOf(L"EPSG:4978"), kindGeocentric);
    EXPECT_EQ(kindOf(L"EPSG:4979"), kindGeographic);
}

} // namespace
} // namespace Tests
