// --format: definitions for other programs.
#include <algorithm>

#include "cli/system_equivalence.h"
#include "command_line_test.h"

namespace Tests {
namespace {

constexpr const char* kAllFormats[] = {"wkt2", "wkt1", "esri", "projjson", "proj"};

using SystemFormat = CommandLineTest;

TEST_F(SystemFormat, EachFormat_IsTheDefinitionAloneOnOneLine)
{
    givenDrawingWith("plan.qedb", "EPSG:26915");
    const std::pair<const char*, const char*> begins[] = {{"wkt2", "PROJCRS[\"NAD83 / UTM zone 15N\",BASEGEOGCRS["},
                                                          {"wkt1", "PROJCS[\"NAD83 / UTM zone 15N\",GEOGCS["},
                                                          {"esri", "PROJCS[\"NAD_1983_UTM_Zone_15N\",GEOGCS["},
                                                          {"projjson", "{\"$schema\":"},
                                                          {"proj", "+proj=utm +zone=15 +datum=NAD83 "}};
    for (const auto& [format, begin] : begins) {
        SCOPED_TRACE(format);
        const ProgramResult shown = run({"show", "plan.qedb", "--format", format});
        expectResult(run({"catalog", "show", "EPSG:26915", "--format", format}), 0, shown.output, "");
        EXPECT_EQ(shown.status, 0);
        EXPECT_THAT(shown.output, testing::StartsWith(begin));
        EXPECT_EQ(std::count(shown.output.begin(), shown.output.end(), '\n'), 1);
    }
}

TEST_F(SystemFormat, WhatIsWritten_IsTheSameSystemForProj)
{
    for (const std::string code : {"EPSG:4326", "EPSG:25832", "EPSG:31467", "EPSG:2193", "EPSG:4979", "EPSG:4978",
                                   "EPSG:7415", "EPSG:27572", "EPSG:5514", "EPSG:2263", "ESRI:102003", "EPSG:3857"}) {
        for (const std::string format : kAllFormats) {
            SCOPED_TRACE(code + " " + format);
            const ProgramResult result = run({"catalog", "show", code, "--format", format});
            const bool hasOrder = format != "esri" && format != "proj";
            if (result.status == 0)
                EXPECT_TRUE(isSameSystem(code, result.output, hasOrder ? AxisOrder::counts : AxisOrder::ignored))
                    << result.output;
            else
                EXPECT_THAT(result.errors, testing::HasSubstr(" cannot say "));
        }
    }
}

TEST_F(SystemFormat, Wkt2AndProjjson_SayEverySystem)
{
    for (const std::string code : {"EPSG:4979", "EPSG:4978", "EPSG:7415", "EPSG:31467", "LOCAL:METRE"})
        for (const std::string format : {"wkt2", "projjson"})
            EXPECT_EQ(run({"catalog", "show", code, "--format", format}).status, 0) << code << " " << format;
}

TEST_F(SystemFormat, Wkt1_KeepsANorthingBeforeAnEasting)
{
    EXPECT_TRUE(isSameSystem("EPSG:31467", run({"catalog", "show", "EPSG:31467", "--format", "wkt1"}).output));
}

TEST_F(SystemFormat, WhatAFormatCannotSay_IsRefusedByName)
{
    const auto expectRefusal = [&](const std::string& code, const std::string& format, const std::string& message) {
        expectResult(run({"catalog", "show", code, "--format", format}), 1, "",
                     "orvelcs: catalog show: " + code + ": " + message + ": statusUnsupported (44)\n");
    };
    expectRefusal("EPSG:25832", "proj",
                  "a PROJ string cannot say its datum European Terrestrial Reference System 1989; wkt2, wkt1, esri, "
                  "projjson can");
    expectRefusal("EPSG:7415", "proj", "a PROJ string cannot say its heights; wkt2, wkt1, esri, projjson can");
    expectRefusal("EPSG:4979", "proj", "a PROJ string cannot say its heights; wkt2, esri, projjson can");
    expectRefusal("EPSG:4979", "wkt1",
                  "WKT 1 cannot say its heights (WKT1 does not support Geographic 3D CRS.); wkt2, esri, projjson can");
    expectRefusal("EPSG:4978", "esri",
                  "ESRI WKT cannot say a geocentric system (Geocentric CRS not supported in WKT1_ESRI); wkt2, wkt1, "
                  "projjson, proj can");
}

constexpr const char* kAxesInDegrees =
    "CS[ellipsoidal,2],AXIS[\"latitude\",north],AXIS[\"longitude\",east],ANGLEUNIT[\"degree\",0.0174532925199433]";
constexpr const char* kEllipsoid = "ELLIPSOID[\"WGS 84\",6378137,298.257223563]";

TEST_F(SystemFormat, PartsThatProjDoesNotCompare_AreRefusedByName)
{
    const auto datum = [](const std::string& frame, const std::string& identifier) {
        return "GEOGCRS[\"Works\",DYNAMIC[" + frame + "],DATUM[\"Works\"," + kEllipsoid + identifier + "]," +
               kAxesInDegrees + "]";
    };
    const std::string heights =
        "COMPOUNDCRS[\"Works\",GEOGCRS[\"WGS 84\",DATUM[\"World Geodetic System 1984\"," + std::string(kEllipsoid) +
        "]," + kAxesInDegrees +
        "],VERTCRS[\"Works height\",VDATUM[\"Works\"],CS[vertical,1],AXIS[\"height\",up],LENGTHUNIT[\"metre\",1],"
        "GEOIDMODEL[\"Works geoid\"]]]";
    given("epoch.wkt", datum("FRAMEEPOCH[2010]", ""));
    given("model.wkt", datum("FRAMEEPOCH[2010],MODEL[\"Plates\"]", ",ID[\"WORKS\",1]"));
    given("named.wkt", datum("FRAMEEPOCH[2010]", ",ID[\"WORKS\",1]"));
    given("heights.wkt", heights);
    const auto error = [&](const char* file) { return run({"show", file, "--format", "wkt1"}).errors; };
    EXPECT_THAT(error("@epoch.wkt"),
                testing::HasSubstr("WKT 1 cannot say the reference epoch of its datum Works; wkt2, projjson can"));
    EXPECT_THAT(error("@model.wkt"), testing::HasSubstr("WKT 1 cannot say the deformation model of its datum Works"));
    EXPECT_EQ(error("@named.wkt"), ""); // the identifier stands for the datum's epoch
    EXPECT_THAT(error("@heights.wkt"), testing::HasSubstr("WKT 1 cannot say its geoid model; wkt2, projjson can"));
}

TEST_F(SystemFormat, RefusalInJson_HasTheErrorOfTheLibrary)
{
    const Json document = runForJson({"catalog", "show", "EPSG:25832", "--format", "proj"}, 1);
    EXPECT_EQ(document["error"]["code"], 44);
    EXPECT_EQ(document["error"]["name"], "statusUnsupported");
}

TEST_F(SystemFormat, Json_HasTheFormatAndTheDefinition)
{
    givenDrawingWith("plan.qedb", "EPSG:26915");
    const Json json = runForJson({"show", "plan.qedb", "--format", "proj"});
    EXPECT_EQ(json["code"], "EPSG:26915");
    EXPECT_EQ(json["format"], "proj");
    EXPECT_EQ(json["definition"].get<std::string>() + "\n", run({"show", "plan.qedb", "--format", "proj"}).output);
    EXPECT_EQ(runForJson({"catalog", "show", "EPSG:26915", "--format", "proj"})["definition"], json["definition"]);
}

TEST_F(SystemFormat, BatchPrintsALineForEachDrawing_AndFailsForWhatCannotBeSaid)
{
    givenDrawingWith("a.qedb", "EPSG:26915");
    givenDrawingWith("b.qedb", "EPSG:25832");
    givenDrawing("c.qedb");
    const ProgramResult result = run({"show", "a.qedb", "b.qedb", "c.qedb", "--format", "proj"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, run({"show", "a.qedb", "--format", "proj"}).output);
    EXPECT_THAT(result.errors, testing::AllOf(testing::HasSubstr("b.qedb: a PROJ string cannot say its datum"),
                                              testing::HasSubstr("c.qedb: has no coordinate system")));
}

TEST_F(SystemFormat, UserDefinedSystem_KeepsItsDefinition)
{
    const std::string text =
        "+proj=tmerc +lat_0=0 +lon_0=9 +k=1 +x_0=5 +y_0=7 +datum=WGS84 +units=m +no_defs +type=crs";
    given("works.txt", text);
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"assign", "@works.txt", "--code", "WORKS:1", "plan.qedb"}).status, 0);
    for (const std::string format : kAllFormats) {
        SCOPED_TRACE(format);
        EXPECT_TRUE(isSameSystem(text, run({"show", "plan.qedb", "--format", format}).output));
    }
}

TEST_F(SystemFormat, WrongFormats_AreWrongUsage)
{
    expectWrongUsage(
        run({"show", "plan.qedb", "--format", "wkt3"}),
        "orvelcs: show: --format: expected one of wkt2, wkt1, esri, projjson, proj, found wkt3; the nearest "
        "are wkt2, wkt1");
    expectWrongUsage(run({"catalog", "show", "EPSG:4326", "--format", "wkt2", "--wkt"}),
                     "orvelcs: catalog show: --wkt: has no place beside --format, which prints the definition alone");
}

} // namespace
} // namespace Tests
