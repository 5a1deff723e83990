#include "orvelcs/output/geopackage.h"

#include <memory>
#include <new>
#include <vector>

#include <fmt/format.h>

#include "embedded/base/sqlite.h"
#include "orvelcs/cli/failure.h"

namespace Orvelcs {
namespace {

/// The tables of GeoPackage 1.3, with a place for the columns of the extension. 0x47504B47 is "GPKG".
constexpr const char* kGeoPackageTables = R"sql(
PRAGMA application_id = 0x47504B47;
PRAGMA user_version = 10300;
CREATE TABLE gpkg_spatial_ref_sys (
    srs_name TEXT NOT NULL,
    srs_id INTEGER NOT NULL PRIMARY KEY,
    organization TEXT NOT NULL,
    organization_coordsys_id INTEGER NOT NULL,
    definition TEXT NOT NULL,
    description TEXT{}
);
CREATE TABLE gpkg_contents (
    table_name TEXT NOT NULL PRIMARY KEY,
    data_type TEXT NOT NULL,
    identifier TEXT UNIQUE,
    description TEXT DEFAULT '',
    last_change DATETIME NOT NULL DEFAULT (strftime('%Y-%m-%dT%H:%M:%fZ','now')),
    min_x DOUBLE,
    min_y DOUBLE,
    max_x DOUBLE,
    max_y DOUBLE,
    srs_id INTEGER,
    CONSTRAINT fk_gc_r_srs_id FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id)
);
CREATE TABLE gpkg_geometry_columns (
    table_name TEXT NOT NULL,
    column_name TEXT NOT NULL,
    geometry_type_name TEXT NOT NULL,
    srs_id INTEGER NOT NULL,
    z TINYINT NOT NULL,
    m TINYINT NOT NULL,
    CONSTRAINT pk_geom_cols PRIMARY KEY (table_name, column_name),
    CONSTRAINT uk_gc_table_name UNIQUE (table_name),
    CONSTRAINT fk_gc_tn FOREIGN KEY (table_name) REFERENCES gpkg_contents(table_name),
    CONSTRAINT fk_gc_srs FOREIGN KEY (srs_id) REFERENCES gpkg_spatial_ref_sys(srs_id)
);
)sql";

/// The extension for WKT 2, in a column of its own, and for the epoch of coordinates, which stays empty.
constexpr const char* kWkt2Columns = ", definition_12_063 TEXT NOT NULL, epoch DOUBLE";
constexpr const char* kWkt2Extension = R"sql(
CREATE TABLE gpkg_extensions (
    table_name TEXT,
    column_name TEXT,
    extension_name TEXT NOT NULL,
    definition TEXT NOT NULL,
    scope TEXT NOT NULL,
    CONSTRAINT ge_tce UNIQUE (table_name, column_name, extension_name)
);
INSERT INTO gpkg_extensions VALUES
    ('gpkg_spatial_ref_sys', 'definition_12_063', 'gpkg_crs_wkt_1_1',
     'http://www.geopackage.org/spec/#extension_crs_wkt', 'read-write'),
    ('gpkg_spatial_ref_sys', 'epoch', 'gpkg_crs_wkt_1_1',
     'http://www.geopackage.org/spec/#extension_crs_wkt', 'read-write');
)sql";

/// The systems of every GeoPackage.
std::vector<GeoPackageSystem> obligatorySystems()
{
    return {
        {-1, "Undefined Cartesian SRS", "NONE", -1, "", ""},
        {0, "Undefined geographic SRS", "NONE", 0, "", ""},
        {kGeoPackageWgs84, "WGS 84 geodetic", "EPSG", 4326,
         R"(GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,AUTHORITY["EPSG","7030"]],)"
         R"(AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],)"
         R"(UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AXIS["Latitude",NORTH],AXIS["Longitude",EAST],)"
         R"(AUTHORITY["EPSG","4326"]])",
         R"(GEOGCRS["WGS 84",DATUM["World Geodetic System 1984",ELLIPSOID["WGS 84",6378137,298.257223563,)"
         R"(LENGTHUNIT["metre",1]]],PRIMEM["Greenwich",0,ANGLEUNIT["degree",0.0174532925199433]],CS[ellipsoidal,2],)"
         R"(AXIS["latitude",north,ORDER[1],ANGLEUNIT["degree",0.0174532925199433]],)"
         R"(AXIS["longitude",east,ORDER[2],ANGLEUNIT["degree",0.0174532925199433]],ID["EPSG",4326]])"}};
}

/// The one layer, without features. It may have heights, but no measures.
constexpr const char* kLayer = R"sql(
CREATE TABLE drawing (
    fid INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL,
    geom GEOMETRY
);
)sql";

std::string orUndefined(const std::string& definition)
{
    return definition.empty() ? "undefined" : definition;
}

void insertSystem(SQLite::Database& database, const GeoPackageSystem& system, bool hasWkt2)
{
    SQLite::Statement row(database, fmt::format("INSERT INTO gpkg_spatial_ref_sys VALUES (?, ?, ?, ?, ?, NULL{})",
                                                hasWkt2 ? ", ?, NULL" : ""));
    row.bind(1, system.name);
    row.bind(2, system.id);
    row.bind(3, system.organization);
    row.bind(4, system.codeOfOrganization);
    row.bind(5, orUndefined(system.wkt1));
    if (hasWkt2)
        row.bind(6, orUndefined(system.wkt2));
    row.exec();
}

void insertSystems(SQLite::Database& database, const GeoPackageSystem& system, bool hasWkt2)
{
    for (const GeoPackageSystem& obligatory : obligatorySystems())
        insertSystem(database, obligatory, hasWkt2);
    if (system.id != kGeoPackageWgs84)
        insertSystem(database, system, hasWkt2);
}

void insertLayer(SQLite::Database& database, int systemId)
{
    database.exec(kLayer);
    for (const char* const sql :
         {"INSERT INTO gpkg_contents (table_name, data_type, identifier, srs_id) "
          "VALUES ('drawing', 'features', 'drawing', ?1)",
          "INSERT INTO gpkg_geometry_columns VALUES ('drawing', 'geom', 'GEOMETRY', ?1, 2, 0)"}) {
        SQLite::Statement row(database, sql);
        row.bind(1, systemId);
        row.exec();
    }
}

std::string bytesOf(const SQLite::Database& database)
{
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
        sqlite3_serialize(database.getHandle(), "main", &size, 0), sqlite3_free);
    if (!bytes)
        throw std::bad_alloc();
    return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(size)};
}

} // namespace

std::string writeGeoPackage(const GeoPackageSystem& system, const std::string& subject)
{
    const Embedded::Expected<std::string> bytes = Embedded::catchSqlError([&] {
        SQLite::Database database(":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        const bool hasWkt2 = !system.wkt2.empty();
        database.exec(fmt::format(kGeoPackageTables, hasWkt2 ? kWkt2Columns : ""));
        if (hasWkt2)
            database.exec(kWkt2Extension);
        insertSystems(database, system, hasWkt2);
        insertLayer(database, system.id);
        return bytesOf(database);
    });
    if (!bytes)
        throw Failure(subject, "a GeoPackage cannot be made: " + bytes.error().message);
    return *bytes;
}

} // namespace Orvelcs
