// export: a drawing's coordinate system in a file for other programs.
#include <sqlite3.h>

#include <memory>

#include "command_line_test.h"

namespace Tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

struct CloseSqlite {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

class Export : public CommandLineTest {
protected:
    /// The rows that a query gives, their columns joined by |.
    std::vector<std::string> query(const std::string& file, const std::string& sql) const
    {
        sqlite3* opened = nullptr;
        sqlite3_stmt* prepared = nullptr;
        EXPECT_EQ(sqlite3_open_v2(path(file).string().c_str(), &opened, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
        const std::unique_ptr<sqlite3, CloseSqlite> database(opened);
        EXPECT_EQ(sqlite3_prepare_v2(opened, sql.c_str(), -1, &prepared, nullptr), SQLITE_OK) << sqlite3_errmsg(opened);
        const std::unique_ptr<sqlite3_stmt, CloseSqlite> statement(prepared);
        std::vector<std::string> rows;
        while (sqlite3_step(prepared) == SQLITE_ROW) {
            rows.emplace_back();
            for (int column = 0; column < sqlite3_column_count(prepared); ++column) {
                const unsigned char* const text = sqlite3_column_text(prepared, column);
                rows.back() += std::string(column > 0 ? "|" : "") +
                               (text != nullptr ? reinterpret_cast<const char*>(text) : "null");
            }
        }
        return rows;
    }
};

TEST_F(Export, EndingOfTheName_ChoosesTheFormat)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const std::pair<const char*, const char*> formats[] = {
        {"plan.prj", "esri"}, {"plan.wkt", "wkt2"}, {"plan.json", "projjson"}, {"PLAN2.PRJ", "esri"}};
    for (const auto& [file, format] : formats) {
        SCOPED_TRACE(file);
        expectResult(run({"export", "plan.qedb", "-o", file}), 0,
                     std::string(file) + ": ETRS89 / UTM zone 32N, as " + format + "\n", "");
        EXPECT_EQ(contents(file), run({"show", "plan.qedb", "--format", format}).output);
    }
    expectResult(run({"export", "plan.qedb", "-o", "plan.gpkg"}), 0, "plan.gpkg: ETRS89 / UTM zone 32N, as gpkg\n", "");
    EXPECT_THAT(contents("plan.gpkg"), StartsWith(std::string("SQLite format 3\0", 16)));
}

TEST_F(Export, CodesAndTexts_AreSystemsToo)
{
    given("works.txt", "+proj=tmerc +lat_0=0 +lon_0=9 +k=1 +x_0=5 +y_0=7 +datum=WGS84 +type=crs");
    givenDrawingWith("plan.qedb", "EPSG:4326");
    EXPECT_EQ(run({"export", "EPSG:25832", "-o", "code.prj"}).status, 0);
    EXPECT_EQ(contents("code.prj"), run({"catalog", "show", "EPSG:25832", "--format", "esri"}).output);
    EXPECT_EQ(run({"export", "@works.txt", "-o", "text.wkt"}).status, 0);
    EXPECT_EQ(contents("text.wkt"), run({"show", "@works.txt", "--format", "wkt2"}).output);
    const std::string wgs84 = run({"show", "plan.qedb", "--format", "wkt2"}).output;
    expectResult(run({"export", "@plan.qedb", "-o", "-"}), 0, wgs84, "");
    expectResult(run({"export", "-", "-o", "-"}, contents("plan.qedb")), 0, wgs84, "");
}

TEST_F(Export, StandardOutput_TakesTheFormatOfItsOption)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    for (const std::string format : {"wkt2", "esri", "projjson"})
        expectResult(run({"export", "plan.qedb", "-o", "-", "--format", format}), 0,
                     run({"show", "plan.qedb", "--format", format}).output, "");
    expectResult(run({"export", "plan.qedb", "-o", "-"}), 0, run({"show", "plan.qedb", "--format", "wkt2"}).output, "");
}

TEST_F(Export, Json_NamesTheFilesAndTheSystem)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    EXPECT_EQ(runForJson({"export", "plan.qedb", "-o", "plan.prj"}), Json({{"file", "plan.qedb"},
                                                                           {"output", "plan.prj"},
                                                                           {"format", "esri"},
                                                                           {"code", "EPSG:25832"},
                                                                           {"name", "ETRS89 / UTM zone 32N"}}));
    EXPECT_EQ(runForJson({"export", "plan.qedb", "-o", "plan.gpkg"})["format"], "gpkg");
}

TEST_F(Export, DrawingWithoutASystem_IsNothingFound)
{
    givenDrawing("plan.qedb");
    expectResult(run({"export", "plan.qedb", "-o", "plan.prj"}), 3, "",
                 "orvelcs: export: plan.qedb: has no coordinate system\n");
    const Json json = runForJson({"export", "plan.qedb", "-o", "plan.gpkg"}, 3);
    EXPECT_EQ(json["output"], "plan.gpkg");
    EXPECT_EQ(json["code"], nullptr);
    EXPECT_EQ(json["error"]["message"], "has no coordinate system");
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(Export, FileThatExists_IsOverwrittenOnlyByForce)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    for (const std::string file : {"plan.prj", "plan.gpkg"}) {
        given(file, "mine");
        expectResult(run({"export", "plan.qedb", "-o", file}), 1, "",
                     "orvelcs: export: " + file + ": exists; --force overwrites it\n");
        EXPECT_EQ(contents(file), "mine");
        EXPECT_EQ(run({"export", "plan.qedb", "-o", file, "--force"}).status, 0);
        EXPECT_NE(contents(file), "mine");
    }
    EXPECT_THAT(files(), ElementsAre("plan.gpkg", "plan.prj", "plan.qedb"));
}

TEST_F(Export, DrawingItself_IsNeverReplaced)
{
    givenDrawingWith("plan.json", "EPSG:25832");
    const std::string before = contents("plan.json");
    for (const std::string source : {"plan.json", "@plan.json"})
        expectWrongUsage(run({"export", source, "-o", "plan.json", "--force"}),
                         "orvelcs: export: plan.json: is the drawing itself; -o needs the name of another file");
    EXPECT_EQ(contents("plan.json"), before);
}

TEST_F(Export, OtherEndings_AreWrongUsage)
{
    const std::string expected = ": expected a name that ends in .wkt, .prj, .json, .gpkg, found ";
    expectWrongUsage(run({"export", "plan.qedb", "-o", "plan"}), "orvelcs: export: plan" + expected + "none");
    expectWrongUsage(run({"export", "plan.qedb", "-o", ".prj"}), "orvelcs: export: .prj" + expected + "none");
    expectWrongUsage(run({"export", "plan.qedb", "-o", "plan.shp"}), "orvelcs: export: plan.shp" + expected + ".shp");
    expectWrongUsage(run({"export", "plan.qedb", "-o", "a.prj/plan.prk"}),
                     "orvelcs: export: a.prj/plan.prk" + expected + ".prk; the nearest is .prj");
}

TEST_F(Export, OptionsThatDoNotGoTogether_AreWrongUsage)
{
    expectWrongUsage(
        run({"export", "plan.qedb", "-o", "plan.prj", "--format", "esri"}),
        "orvelcs: export: --format: goes with -o - only; the ending of the file's name chooses the format");
    expectWrongUsage(run({"export", "plan.qedb", "-o", "-", "--format", "gpkg"}),
                     "orvelcs: export: --format: expected one of wkt2, esri, projjson, found gpkg");
    expectWrongUsageAsJson(run({"export", "plan.qedb", "-o", "-", "--json"}),
                           "orvelcs: export: --json: has no place beside -o -, which prints the definition alone");
    EXPECT_EQ(run({"export", "plan.qedb"}).status, 2);
    EXPECT_EQ(run({"export", "-o", "plan.prj"}).status, 2);
}

TEST_F(Export, SourcesThatCannotBeRead_AreNamed)
{
    const auto error = [&](const std::string& source) {
        const ProgramResult result = run({"export", source, "-o", "plan.prj"});
        EXPECT_EQ(result.output, "");
        return std::to_string(result.status) + " " + result.errors;
    };
    given("text.qedb", "no drawing");
    givenDrawingWith("plan.qedb", "EPSG:25832");
    std::string damaged = contents("plan.qedb");
    damaged.replace(damaged.size() / 2, 2000, 2000, '\0');
    given("damaged.qedb", damaged);
    std::filesystem::create_directory(path("folder"));
    EXPECT_THAT(error("none.qedb"), StartsWith("1 orvelcs: export: none.qedb: eFileNotFound (50): "));
    EXPECT_THAT(error("text.qedb"), StartsWith("1 orvelcs: export: text.qedb: eFileDamaged (51): "));
    EXPECT_THAT(error("damaged.qedb"), StartsWith("1 orvelcs: export: damaged.qedb: eFileDamaged (51): "));
    EXPECT_THAT(error("folder"), StartsWith("1 orvelcs: export: folder: "));
    EXPECT_THAT(error("EPSG:25832000"), StartsWith("3 orvelcs: export: EPSG:25832000: the catalog has no such code"));
    EXPECT_THAT(error("@none.txt"), StartsWith("1 orvelcs: export: "));
    EXPECT_FALSE(std::filesystem::exists(path("plan.prj")));
}

TEST_F(Export, TargetsThatCannotBeWritten_AreNamed_AndLeaveNothing)
{
    std::filesystem::create_directory(path("folder.prj"));
    expectResult(run({"export", "EPSG:25832", "-o", "none/plan.gpkg"}), 1, "",
                 StartsWith("orvelcs: export: none/plan.gpkg: eFileWriteFailed (54): cannot be written: "));
    for (const char* force : {"-q", "--force"})
        expectResult(run({"export", "EPSG:25832", "-o", "folder.prj", force}), 1, "",
                     StartsWith("orvelcs: export: folder.prj: eFileWriteFailed (54): cannot be written: "));
    EXPECT_THAT(files(), ElementsAre("folder.prj"));
}

TEST_F(Export, WhatAFormatCannotSay_IsRefusedByName_WithTheFormatsThatCan)
{
    given("bound.txt", "+proj=tmerc +lon_0=9 +ellps=bessel +towgs84=1,2,3,4,5,6,7 +type=crs");
    given("rotated.txt", "+proj=ob_tran +o_proj=longlat +o_lon_p=0 +o_lat_p=39.25 +lon_0=18 +ellps=WGS84 +type=crs");
    const auto expectRefusal = [&](const std::string& system, const std::string& file, const std::string& message) {
        expectResult(run({"export", system, "-o", file}), 1, "",
                     "orvelcs: export: " + system + ": " + message + ": statusUnsupported (44)\n");
        EXPECT_FALSE(std::filesystem::exists(path(file)));
    };
    expectRefusal(
        "EPSG:4978", "plan.prj",
        "ESRI WKT cannot say a geocentric system (Geocentric CRS not supported in WKT1_ESRI); .wkt, .json can");
    expectRefusal("@bound.txt", "plan.prj",
                  "ESRI WKT cannot say its transformation to another system; .wkt, .json can");
    expectRefusal(
        "@rotated.txt", "plan.prj",
        "ESRI WKT cannot say a derived system (DerivedGeographicCRS can only be exported to WKT2); .json can");
    expectRefusal("@rotated.txt", "plan.gpkg", "WKT 2 cannot say its axes, units or prime meridian; .json can");
    EXPECT_EQ(run({"export", "@rotated.txt", "-o", "plan.json"}).status, 0);
}

TEST_F(Export, EpochOfCoordinates_IsRefused)
{
    std::string system = run({"catalog", "show", "EPSG:9000", "--format", "wkt2"}).output;
    system.pop_back(); // the newline
    given("epoch.wkt", "COORDINATEMETADATA[" + system + ",EPOCH[2020.5]]");
    for (const std::string file : {"plan.prj", "plan.wkt", "plan.json", "plan.gpkg"}) {
        expectResult(run({"export", "@epoch.wkt", "-o", file}), 1, "", StartsWith("orvelcs: export: epoch.wkt: "));
        EXPECT_FALSE(std::filesystem::exists(path(file)));
    }
}

TEST_F(Export, WithoutACatalog_DrawingIsExportedAsItIsStored)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const std::string wkt2 = run({"show", "plan.qedb", "--format", "wkt2"}).output;
    expectResult(runWithoutCatalog({"export", "plan.qedb", "-o", "-"}), 0, wkt2, "");
    EXPECT_EQ(runWithoutCatalog({"export", "plan.qedb", "-o", "plan.gpkg"}).status, 0);
    EXPECT_THAT(query("plan.gpkg", "SELECT definition_12_063 || x'0a' FROM gpkg_spatial_ref_sys WHERE srs_id = 100000"),
                ElementsAre(wkt2));
    expectResult(runWithoutCatalog({"export", "plan.qedb", "-o", "plan.prj"}), 1, "",
                 HasSubstr("; the catalog cannot be read: there is no proj.db in "));
}

TEST_F(Export, DatumOfTheUsersOwn_IsWrittenAsEsriSpellsIt)
{
    given("works.txt", "+proj=tmerc +lat_0=0 +lon_0=9 +k=1 +x_0=5 +y_0=7 +ellps=bessel +units=m +type=crs");
    EXPECT_THAT(run({"export", "@works.txt", "-o", "-", "--format", "esri"}).output,
                HasSubstr("DATUM[\"D_Unknown_based_on_Bessel_1841_ellipsoid\","));
}

TEST_F(Export, GeoPackage_HasTheTablesOfTheStandard)
{
    ASSERT_EQ(run({"export", "EPSG:25832", "-o", "plan.gpkg"}).status, 0);
    EXPECT_THAT(query("plan.gpkg", "PRAGMA application_id"), ElementsAre(std::to_string(0x47504B47)));
    EXPECT_THAT(query("plan.gpkg", "PRAGMA user_version"), ElementsAre("10300"));
    EXPECT_THAT(query("plan.gpkg", "PRAGMA integrity_check"), ElementsAre("ok"));
    EXPECT_THAT(query("plan.gpkg", "PRAGMA foreign_key_check"), ElementsAre());
    EXPECT_THAT(
        query("plan.gpkg", "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"),
        ElementsAre("drawing", "gpkg_contents", "gpkg_geometry_columns", "gpkg_spatial_ref_sys", "sqlite_sequence"));
    EXPECT_THAT(query("plan.gpkg", "SELECT srs_id, organization, organization_coordsys_id, srs_name "
                                   "FROM gpkg_spatial_ref_sys ORDER BY srs_id"),
                ElementsAre("-1|NONE|-1|Undefined Cartesian SRS", "0|NONE|0|Undefined geographic SRS",
                            "4326|EPSG|4326|WGS 84 geodetic", "25832|EPSG|25832|ETRS89 / UTM zone 32N"));
    EXPECT_THAT(query("plan.gpkg", "SELECT table_name, data_type, srs_id, min_x FROM gpkg_contents"),
                ElementsAre("drawing|features|25832|null"));
    EXPECT_THAT(query("plan.gpkg", "SELECT * FROM gpkg_geometry_columns"),
                ElementsAre("drawing|geom|GEOMETRY|25832|2|0"));
    EXPECT_THAT(query("plan.gpkg", "SELECT definition || x'0a' FROM gpkg_spatial_ref_sys WHERE srs_id = 25832"),
                ElementsAre(run({"catalog", "show", "EPSG:25832", "--format", "wkt1"}).output));
    EXPECT_THAT(query("plan.gpkg", "SELECT count(*) FROM drawing"), ElementsAre("0"));
}

TEST_F(Export, GeoPackageOfWgs84_HasNoFurtherSystem)
{
    ASSERT_EQ(run({"export", "EPSG:4326", "-o", "plan.gpkg"}).status, 0);
    EXPECT_THAT(query("plan.gpkg", "SELECT srs_id FROM gpkg_spatial_ref_sys ORDER BY 1"),
                ElementsAre("-1", "0", "4326"));
    EXPECT_THAT(query("plan.gpkg", "SELECT srs_id FROM gpkg_contents"), ElementsAre("4326"));
}

TEST_F(Export, GeoPackageOfWhatWkt1CannotSay_HasWkt2InTheExtension)
{
    ASSERT_EQ(run({"export", "EPSG:4979", "-o", "plan.gpkg"}).status, 0);
    EXPECT_THAT(query("plan.gpkg", "SELECT definition FROM gpkg_spatial_ref_sys WHERE srs_id = 4979"),
                ElementsAre("undefined"));
    EXPECT_THAT(query("plan.gpkg", "SELECT definition_12_063 || x'0a' FROM gpkg_spatial_ref_sys WHERE srs_id = 4979"),
                ElementsAre(run({"catalog", "show", "EPSG:4979", "--format", "wkt2"}).output));
    EXPECT_THAT(query("plan.gpkg", "SELECT table_name, column_name, extension_name, scope FROM gpkg_extensions"),
                ElementsAre("gpkg_spatial_ref_sys|definition_12_063|gpkg_crs_wkt_1_1|read-write",
                            "gpkg_spatial_ref_sys|epoch|gpkg_crs_wkt_1_1|read-write"));
    EXPECT_THAT(query("plan.gpkg", "SELECT srs_id FROM gpkg_spatial_ref_sys WHERE definition_12_063 = 'undefined'"),
                ElementsAre("-1", "0"));
}

TEST_F(Export, GeoPackage_NamesAnOrganizationOnlyForWhatTheCatalogHas)
{
    const auto system = [&](const std::string& source) {
        EXPECT_EQ(run({"export", source, "-o", "plan.gpkg", "--force"}).status, 0);
        return query("plan.gpkg", "SELECT srs_id, organization, organization_coordsys_id FROM gpkg_spatial_ref_sys "
                                  "WHERE srs_id = (SELECT srs_id FROM gpkg_contents)");
    };
    std::string changed = run({"catalog", "show", "EPSG:25832", "--format", "wkt2"}).output;
    changed.replace(changed.find(",500000,"), 8, ",500001,");
    given("changed.wkt", changed);
    givenDrawing("own.qedb");
    ASSERT_EQ(run({"assign", "@changed.wkt", "--code", "WORKS:7", "own.qedb"}).status, 0);
    EXPECT_THAT(system("ESRI:102003"), ElementsAre("100000|ESRI|102003"));
    EXPECT_THAT(query("plan.gpkg", "SELECT definition, definition_12_063 FROM gpkg_spatial_ref_sys WHERE srs_id = 1e5"),
                ElementsAre(testing::AllOf(StartsWith("PROJCS["), HasSubstr("|PROJCRS["))));
    EXPECT_THAT(system("IGNF:NTFPGRAD"), ElementsAre("100000|NONE|100000"));
    EXPECT_THAT(system("own.qedb"), ElementsAre("100000|NONE|100000"));
    EXPECT_THAT(system("@changed.wkt"), ElementsAre("100000|NONE|100000"));
}

} // namespace
} // namespace Tests
