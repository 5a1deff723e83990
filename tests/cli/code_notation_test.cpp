#include "command_line_test.h"

namespace Tests {
namespace {

/// A code may be written in several ways wherever a command takes one.
class CodeNotation : public CommandLineTest {
protected:
    static Arguments notations()
    {
        return {"EPSG:25832", "epsg:25832", "25832", "urn:ogc:def:crs:EPSG::25832",
                "http://www.opengis.net/def/crs/EPSG/0/25832"};
    }
};

TEST_F(CodeNotation, DrawingStoresTheCatalogsSpelling)
{
    for (const std::string& code : notations()) {
        givenDrawing("plan.qedb");
        const Json report = runForJson({"assign", code, "plan.qedb"});
        EXPECT_EQ(report["events"].back(), event("changed", "EPSG:25832")) << code;
        EXPECT_EQ(runForJson({"show", "plan.qedb"})["code"], "EPSG:25832") << code;
        EXPECT_THAT(runForJson({"forms", "plan.qedb"})["geoData"]["text"].get<std::string>(),
                    testing::Not(testing::HasSubstr("urn:")))
            << code;
    }
}

TEST_F(CodeNotation, EachCommandThatTakesASystem_ReadsIt)
{
    const std::string block = run({"encode", "EPSG:25832", "--drawing-version", "33"}).output;
    const std::string point = run({"transform", "EPSG:25832", "EPSG:4326"}, "500000 5500000\n").output;
    const Json listed = runForJson({"transformation", "list", "EPSG:25832", "EPSG:4230"});
    for (const std::string& code : notations()) {
        EXPECT_EQ(runForJson({"catalog", "show", code})["code"], "EPSG:25832") << code;
        EXPECT_EQ(run({"encode", code, "--drawing-version", "33"}).output, block) << code;
        EXPECT_EQ(run({"transform", code, "4326"}, "500000 5500000\n").output, point) << code;
        EXPECT_EQ(runForJson({"transformation", "list", code, "4230"}), listed) << code;
    }
}

TEST_F(CodeNotation, ConfigurationStoresTheCatalogsSpelling)
{
    const Arguments item = {"--name", "ED50 to WGS 84 (1)", "--type", "transformation"};
    const Arguments pair = {"--source", "4230", "--target", "urn:ogc:def:crs:EPSG::4326", "--drawing", "plan.qedb"};
    givenDrawing("plan.qedb");
    for (const Arguments& force : {Arguments{}, Arguments{"--force"}}) {
        runForJson(concatenate(concatenate({"config", "add"}, concatenate(item, pair)), force));
        const Json items = runForJson({"config", "items", "--drawing", "plan.qedb"});
        ASSERT_EQ(items.size(), 1U);
        EXPECT_EQ(items[0]["sourceCs"], "EPSG:4230");
        EXPECT_EQ(items[0]["targetCs"], "EPSG:4326");
        EXPECT_EQ(runForJson({"transformation", "4230", "4326", "--drawing", "plan.qedb"})["name"],
                  "ED50 to WGS 84 (1)");
        runForJson(concatenate({"config", "remove"}, pair));
    }
}

TEST_F(CodeNotation, ItemThatWasStoredWithAnotherNotation_IsRemovedByIt)
{
    givenConfiguredDrawing("plan.qedb", configurationItem("4230", "4326", "ED50 to WGS 84 (1)", 2));
    expectResult(run({"config", "remove", "--source", "4230", "--target", "4326", "--drawing", "plan.qedb"}), 0,
                 "plan.qedb: item removed\n", "");
}

TEST_F(CodeNotation, NumberOfSeveralAuthorities_IsThatOfEpsg)
{
    EXPECT_EQ(runForJson({"catalog", "show", "ESRI:4812"})["code"], "ESRI:4812");
    EXPECT_EQ(runForJson({"catalog", "show", "4812"})["code"], "EPSG:4812");
}

TEST_F(CodeNotation, NumberOfOneOtherAuthority_IsItsCode)
{
    EXPECT_EQ(runForJson({"catalog", "show", "102100"})["code"], "ESRI:102100");
}

TEST_F(CodeNotation, UnknownCode_IsAnsweredWithTheNearest)
{
    EXPECT_THAT(run({"encode", "99999999", "--drawing-version", "33"}).errors,
                testing::StartsWith("orvelcs: encode: 99999999: the catalog has no such code"));
    EXPECT_THAT(run({"catalog", "show", "urn:ogc:def:crs:EPSG::258320"}).errors,
                testing::AllOf(testing::StartsWith("orvelcs: catalog show: EPSG:258320: the catalog has no such code"),
                               testing::HasSubstr("EPSG:25832 (ETRS89 / UTM zone 32N)")));
}

TEST_F(CodeNotation, UserDefinedSystem_CannotHaveACodeOfTheCatalog)
{
    given("local.wkt", run({"catalog", "show", "EPSG:25832", "--format", "wkt2"}).output);
    givenDrawing("plan.qedb");
    for (const std::string& code : notations())
        EXPECT_THAT(run({"assign", "@local.wkt", "--code", code, "plan.qedb"}).errors,
                    testing::HasSubstr("is the code of a system of the catalog"))
            << code;
}

TEST_F(CodeNotation, NumberInPlaceOfAFile_IsNamed)
{
    givenDrawing("plan.qedb");
    expectWrongUsage(run({"assign", "plan.qedb", "25832"}),
                     "orvelcs: assign: plan.qedb: stands where the code 25832 belongs; did you mean orvelcs assign "
                     "25832 plan.qedb");
}

} // namespace
} // namespace Tests
