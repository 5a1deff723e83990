#include "embedded/spatial_reference/catalog/catalog_areas.h"

#include <unordered_map>

#include <nlohmann/json.hpp>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_connection.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"

namespace Embedded {
namespace {

/// One query for many systems: PROJ would make an object of each. Of several areas PROJ prefers those for large scales.
constexpr const char* kColumns = "SELECT usage.object_auth_name || ':' || usage.object_code, "
                                 "extent.auth_name || ':' || extent.code, "
                                 "(usage.scope_auth_name, usage.scope_code) IN "
                                 "(SELECT auth_name, code FROM scope WHERE scope LIKE '%large scale%'), "
                                 "extent.description, extent.name, extent.south_lat IS NULL, "
                                 "extent.west_lon, extent.south_lat, extent.east_lon, extent.north_lat ";
constexpr const char* kExtents =
    "CROSS JOIN extent ON extent.auth_name = usage.extent_auth_name AND extent.code = usage.extent_code "
    "WHERE usage.object_table_name IN ('geodetic_crs', 'projected_crs', 'compound_crs') "
    "AND NOT (extent.auth_name = 'PROJ' AND extent.code = 'EXTENT_UNKNOWN')";
/// ?1 is a JSON array of [authority, code].
constexpr const char* kUsagesOfSome = "FROM json_each(?1) wanted CROSS JOIN usage "
                                      "ON usage.object_auth_name = json_extract(wanted.value, '$[0]') "
                                      "AND usage.object_code = json_extract(wanted.value, '$[1]') ";
constexpr const char* kUsagesOfAll = "FROM usage ";

enum AreaColumn {
    systemCode,
    areaCode,
    areaIsPreferred,
    areaName,
    areaShortName,
    areaIsUnbounded,
    areaWest,
    areaSouth,
    areaEast,
    areaNorth
};

std::shared_ptr<const CatalogArea> readArea(const CatalogRow& row)
{
    CatalogArea area{wideFromUtf8(row.text(areaName)), wideFromUtf8(row.text(areaShortName)), std::nullopt};
    if (!row.isTrue(areaIsUnbounded))
        area.bounds = {.west = row.number(areaWest),
                       .south = row.number(areaSouth),
                       .east = row.number(areaEast),
                       .north = row.number(areaNorth)};
    return std::make_shared<const CatalogArea>(std::move(area));
}

/// Gathers the rows of the query.
class AreaReader {
public:
    explicit AreaReader(const std::vector<CatalogEntry>& entries) : areas_(entries.size())
    {
        for (std::size_t index = 0; index < entries.size(); ++index) {
            const std::wstring& name = entries[index].areaOfUse;
            if (!name.empty()) // of a local system, which the database does not have
                areas_[index].push_back(std::make_shared<const CatalogArea>(CatalogArea{name, name, std::nullopt}));
            indexes_.emplace(utf8FromWide(entries[index].code), index);
        }
    }

    void read(const CatalogRow& row)
    {
        const auto index = indexes_.find(std::string(row.text(systemCode)));
        if (index == indexes_.end())
            return;
        CatalogAreas& areas = areas_[index->second];
        std::shared_ptr<const CatalogArea>& area = known_[std::string(row.text(areaCode))];
        if (!area)
            area = readArea(row);
        areas.insert(row.isTrue(areaIsPreferred) ? areas.begin() : areas.end(), area);
    }

    std::vector<CatalogAreas> areas() { return std::move(areas_); }

private:
    std::vector<CatalogAreas> areas_;
    std::unordered_map<std::string, std::size_t> indexes_;                      // of the entries, by their codes
    std::unordered_map<std::string, std::shared_ptr<const CatalogArea>> known_; // by their codes
};

std::string wantedCodes(const std::vector<CatalogEntry>& entries)
{
    nlohmann::json wanted = nlohmann::json::array();
    for (const CatalogEntry& entry : entries)
        wanted.push_back({utf8FromWide(authorityOf(entry.code)), utf8FromWide(numberOf(entry.code))});
    return wanted.dump();
}

} // namespace

Expected<std::vector<CatalogAreas>> areasOfUse(const std::vector<CatalogEntry>& entries)
{
    constexpr std::size_t kMany = 1000; // it takes longer to look up more of them than to read all
    const bool readsAll = entries.size() > kMany;
    const std::string sql = std::string(kColumns) + (readsAll ? kUsagesOfAll : kUsagesOfSome) + kExtents;
    const std::vector<std::string> values = readsAll ? std::vector<std::string>() : std::vector{wantedCodes(entries)};
    AreaReader reader(entries);
    return checkCatalogIsOpen()
        .and_then([&] {
            return openedCatalog().forEachRow(sql, values, [&reader](const CatalogRow& row) { reader.read(row); });
        })
        .map([&reader] { return reader.areas(); });
}

} // namespace Embedded
