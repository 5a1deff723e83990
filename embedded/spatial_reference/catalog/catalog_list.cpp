#include "embedded/spatial_reference/catalog/catalog_list.h"

#include <unordered_set>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_connection.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/local_systems.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

/// PROJ's own list looks up the areas of use as well, and tells what a compound system consists of only through an
/// object of each: a search took 218 ms of processor time with it, and takes 66 ms without.
constexpr const char* kListedSystems =
    "SELECT auth_name, code, deprecated, name, type FROM geodetic_crs "
    "UNION ALL SELECT auth_name, code, deprecated, name, 'projected' FROM projected_crs "
    "UNION ALL SELECT compound.auth_name, compound.code, compound.deprecated, compound.name, "
    "coalesce(geodetic.type, 'projected') FROM compound_crs compound "
    "LEFT JOIN geodetic_crs geodetic ON geodetic.auth_name = horiz_crs_auth_name AND geodetic.code = horiz_crs_code";
/// The same systems without what is slow to read.
constexpr const char* kListedCodes = "SELECT auth_name, code, deprecated FROM geodetic_crs "
                                     "UNION ALL SELECT auth_name, code, deprecated FROM projected_crs "
                                     "UNION ALL SELECT auth_name, code, deprecated FROM compound_crs";

enum Column { authorityColumn, codeColumn, deprecatedColumn, nameColumn, typeColumn };

CoordinateReferenceSystemKind kindOfType(std::string_view type)
{
    if (type == "projected")
        return kindProjected;
    return type == "geocentric" ? kindGeocentric : kindGeographic;
}

ListedCode codeIn(const CatalogRow& row)
{
    return {row.text(authorityColumn), row.text(codeColumn), row.isTrue(deprecatedColumn)};
}

CatalogEntry entryIn(const CatalogRow& row)
{
    return {.code = codeIn(row).text(),
            .name = wideFromUtf8(row.text(nameColumn)),
            .kind = kindOfType(row.text(typeColumn)),
            .deprecated = row.isTrue(deprecatedColumn),
            .areaOfUse = {}};
}

using RowReader = std::function<void(const CatalogRow&)>;

Expected<void> readRows(const std::string& sql, const std::vector<std::string>& values, const RowReader& read)
{
    return checkCatalogIsOpen().and_then([&] { return openedCatalog().forEachRow(sql, values, read); });
}

struct CatalogList {
    std::vector<CatalogEntry> entries;
    Expected<void> check;
};

CatalogList readList()
{
    CatalogList list;
    std::unordered_set<std::wstring> seen; // a database of the user's own may repeat systems
    const auto read = [&](const CatalogRow& row) {
        CatalogEntry entry = entryIn(row);
        if (seen.insert(entry.code).second)
            list.entries.push_back(std::move(entry));
    };
    list.check = readRows(kListedSystems, {}, read);
    if (!list.check)
        list.entries.clear();
    for (const Projjson& projjson : localSystems())
        list.entries.push_back(localEntry(projjson));
    return list;
}

const CatalogList& catalogList()
{
    static const CatalogList list = readList();
    return list;
}

} // namespace

CatalogEntry localEntry(const Projjson& projjson)
{
    return {.code = wideFromUtf8(codeOf(projjson)),
            .name = wideFromUtf8(nameOf(projjson)),
            .kind = kindNotEarthReferenced,
            .deprecated = false,
            .areaOfUse = L"Anywhere: a site's own plane"};
}

std::wstring ListedCode::text() const
{
    return wideFromUtf8(CatalogCode{std::string(authority), std::string(code)}.text());
}

void forEachListedCode(const std::function<void(const ListedCode&)>& read)
{
    // What was read before a failure stays: these are suggestions only.
    static_cast<void>(readRows(kListedCodes, {}, [&read](const CatalogRow& row) { read(codeIn(row)); }));
    for (const Projjson& projjson : localSystems())
        read({kLocalAuthority, textOf(projjson["id"], "code"), false});
}

std::optional<CatalogEntry> listedEntry(std::wstring_view code)
{
    const auto parts = splitCode(utf8FromWide(code)).value_or(CatalogCode());
    if (const Projjson* local = parts.authority == kLocalAuthority ? findLocalSystem(parts.code) : nullptr)
        return localEntry(*local);
    std::optional<CatalogEntry> entry;
    const std::string sql = std::string("SELECT * FROM (") + kListedSystems + ") WHERE auth_name = ?1 AND code = ?2";
    static_cast<void>(readRows(sql, {parts.authority, parts.code}, [&entry](const CatalogRow& row) {
        if (!entry)
            entry = entryIn(row);
    }));
    return entry;
}

const std::vector<CatalogEntry>& catalogEntries()
{
    return catalogList().entries;
}

Expected<void> checkCatalogList()
{
    return catalogList().check;
}

} // namespace Embedded
