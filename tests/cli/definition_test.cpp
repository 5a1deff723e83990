#include "command_line_test.h"

namespace Tests {
namespace {

constexpr const char* kProjString = "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 +ellps=GRS80 "
                                    "+towgs84=0,0,0 +units=m +no_defs +type=crs";
constexpr const char* kWkt =
    R"(PROJCS["Works grid",GEOGCS["ETRS89",DATUM["European_Terrestrial_Reference_System_1989",)"
    R"(SPHEROID["GRS 1980",6378137,298.257222101]],PRIMEM["Greenwich",0],)"
    R"(UNIT["degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],)"
    R"(PARAMETER["latitude_of_origin",0],PARAMETER["central_meridian",9],)"
    R"(PARAMETER["scale_factor",1],PARAMETER["false_easting",1000],)"
    R"(PARAMETER["false_northing",2000],UNIT["metre",1]])";

class AssignDefinition : public CommandLineTest {
protected:
    ProgramResult assign(const std::string& definition, const std::string& code = "MINE:1") const
    {
        given("definition.txt", definition);
        givenDrawing("plan.qedb");
        return run({"assign", "--definition", "definition.txt", "--code", code, "plan.qedb"});
    }

    void expectRefused(const std::string& definition, const std::string& message) const
    {
        given("definition.txt", definition);
        givenDrawing("refused.qedb");
        const std::string before = contents("refused.qedb");
        expectResult(run({"assign", "--definition", "definition.txt", "--code", "MINE:1", "refused.qedb"}), 1, "",
                     "orvelcs: assign: definition.txt: " + message + "\n");
        EXPECT_EQ(contents("refused.qedb"), before);
        std::filesystem::remove(path("refused.qedb"));
    }
};

TEST_F(AssignDefinition, Wkt_IsAssignedUnderTheUsersCode)
{
    expectResult(assign(kWkt), 0, "plan.qedb: assigned MINE:1\n", "");
    const Json json = runForJson({"show", "plan.qedb"});
    EXPECT_EQ(json["code"], "MINE:1");
    EXPECT_EQ(json["name"], "Works grid");
    EXPECT_EQ(json["kind"], 3);
    EXPECT_EQ(json["knownToCatalog"], false);
    EXPECT_EQ(json["source"], "geodata");
}

TEST_F(AssignDefinition, ProjString_IsAssigned)
{
    EXPECT_EQ(assign(kProjString).status, 0);
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["kind"], 3);
}

TEST_F(AssignDefinition, ByteOrderMark_IsSkipped)
{
    expectResult(assign(std::string("\xEF\xBB\xBF") + kWkt), 0, "plan.qedb: assigned MINE:1\n", "");
}

TEST_F(AssignDefinition, DashAsDefinition_ReadsStandardInput)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "--definition", "-", "--code", "MINE:1", "plan.qedb"}, kWkt), 0,
                 "plan.qedb: assigned MINE:1\n", "");
}

TEST_F(AssignDefinition, Events_CarryTheUsersCode)
{
    given("definition.txt", kWkt);
    givenDrawing("plan.qedb");
    const Json json = runForJson({"assign", "--definition", "definition.txt", "--code", "MINE:1", "plan.qedb"});
    EXPECT_EQ(json["result"], 0);
    EXPECT_EQ(json["events"][0], Json({{"event", "willChange"}, {"name", "MINE:1"}}));
    EXPECT_EQ(json["events"][3], Json({{"event", "changed"}, {"name", "MINE:1"}}));
}

TEST_F(AssignDefinition, TextThatIsNotADefinition_IsRefused)
{
    expectRefused("a grid of our own",
                  "not a coordinate reference system as WKT, PROJJSON or a PROJ string: statusUnreadable (43)");
}

TEST_F(AssignDefinition, EmptyText_IsRefused)
{
    expectRefused("", "is empty");
    expectRefused("\xEF\xBB\xBF \n", "is empty");
}

TEST_F(AssignDefinition, TextThatIsNotUtf8_IsRefused)
{
    expectRefused(std::string(kWkt) + "\xE9", "is not UTF-8");
}

TEST_F(AssignDefinition, NulCharacter_IsRefused)
{
    expectRefused(std::string(kWkt) + '\0', "holds a NUL character");
}

TEST_F(AssignDefinition, NulInAPROJJSONName_IsRefused)
{
    expectRefused(R"({"type":"EngineeringCRS","name":"Yard\u0000 2"})",
                  "name: a text holds a NUL character (\\u0000): statusUnreadable (43)");
}

TEST_F(AssignDefinition, MetreWithAnotherFactor_IsPreserved)
{
    std::string wkt = kWkt;
    wkt.replace(wkt.find("UNIT[\"metre\",1]"), 15, "UNIT[\"metre\",0.01]");
    EXPECT_EQ(assign(wkt).status, 0);
    const auto expectUnit = [this](const std::string& drawing) {
        EXPECT_THAT(runForJson({"show", "--wkt", drawing})["wkt"].get<std::string>(),
                    testing::HasSubstr("UNIT[\"metre\",0.01]"));
    };
    expectUnit("plan.qedb");
    ASSERT_EQ(run({"convert", "-q", "plan.qedb", "--to", "29", "-o", "old.qedb"}).status, 0); // stores the packed form
    expectUnit("old.qedb");
    ASSERT_EQ(run({"convert", "-q", "old.qedb", "--to", "33", "-o", "new.qedb"}).status, 0);
    expectUnit("new.qedb");
}

TEST_F(AssignDefinition, UnitThatCannotBeStored_IsRefused)
{
    expectRefused(R"(GEOGCRS["x",DATUM["d",ELLIPSOID["s",6378137,298]],CS[ellipsoidal,2],AXIS["latitude",north],)"
                  R"(AXIS["longitude",east],ANGLEUNIT["metre",0.01]])",
                  "a unit cannot be stored as the definition has it: statusUnreadable (43)");
}

TEST_F(AssignDefinition, UnitFactorThatIsNotPositive_IsRefused)
{
    for (const std::string factor : {"0", "-1", "1e-400"}) {
        std::string wkt = kWkt;
        wkt.replace(wkt.find("UNIT[\"metre\",1]"), 15, "UNIT[\"metre\"," + factor + "]");
        expectRefused(wkt, "a unit has a factor that is not above 0: statusUnreadable (43)");
    }
}

TEST_F(AssignDefinition, OverlongText_IsRefused)
{
    expectRefused(std::string((std::size_t{1} << 20) + 1, ' '), "longer than 1048576 bytes");
}

TEST_F(AssignDefinition, MissingFile_IsRefused)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "--definition", "missing.txt", "--code", "MINE:1", "plan.qedb"}), 1, "",
                 "orvelcs: assign: missing.txt: cannot be opened: No such file or directory\n");
}

TEST_F(AssignDefinition, Folder_IsRefused)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "--definition", ".", "--code", "MINE:1", "plan.qedb"}), 1, "",
                 "orvelcs: assign: .: is a folder\n");
}

TEST_F(AssignDefinition, CatalogCode_IsRefused)
{
    given("definition.txt", kWkt);
    givenDrawing("plan.qedb");
    const std::string before = contents("plan.qedb");
    for (const std::string code : {"EPSG:25832", "epsg:25832"})
        expectResult(run({"assign", "--definition", "definition.txt", "--code", code, "plan.qedb"}), 1, "",
                     "orvelcs: assign: " + code +
                         ": is the code of a system of the catalog; a definition needs a code of its own\n");
    EXPECT_EQ(contents("plan.qedb"), before);
}

TEST_F(AssignDefinition, DotAsCode_IsRefused)
{
    given("definition.txt", kWkt);
    givenDrawing("plan.qedb");
    const std::string before = contents("plan.qedb");
    expectResult(
        run({"assign", "--definition", "definition.txt", "--code", ".", "plan.qedb"}), 1, "",
        "orvelcs: assign: --code: expected a code, found \".\", which readers of older drawing versions take for "
        "none\n");
    EXPECT_EQ(contents("plan.qedb"), before);
}

TEST_F(AssignDefinition, RefusedDefinition_IsReportedInTheJsonOfEachDrawing)
{
    given("definition.txt", "nonsense");
    const ProgramResult result =
        run({"--json", "assign", "--definition", "definition.txt", "--code", "MINE:1", "a.qedb", "b.qedb"});
    EXPECT_EQ(result.status, 1);
    const std::string error =
        "not a coordinate reference system as WKT, PROJJSON or a PROJ string: statusUnreadable (43)";
    const auto report = [&](const char* file) {
        return Json({{"file", file},
                     {"result", nullptr},
                     {"status", 43},
                     {"events", Json::array()},
                     {"error", "definition.txt: " + error}});
    };
    EXPECT_EQ(Json::parse(result.output), Json::array({report("a.qedb"), report("b.qedb")}));
    EXPECT_EQ(result.errors, "orvelcs: assign: definition.txt: " + error + "\n");
}

TEST_F(AssignDefinition, ConflictingOptions_AreWrongUsage)
{
    expectWrongUsage(run({"assign", "--definition", "d.txt", "plan.qedb"}),
                     "orvelcs: assign: --definition: needs --code, the code that the system is to have");
    expectWrongUsage(run({"assign", "--code", "MINE:1", "EPSG:4326", "plan.qedb"}),
                     "orvelcs: assign: --code: goes with the system of a text only: @TEXTFILE");
    expectWrongUsage(run({"assign", "--definition", "d.txt", "--code", "", "plan.qedb"}),
                     "orvelcs: assign: --code: is empty");
    expectWrongUsage(run({"assign", "--definition", "-", "--code", "MINE:1", "-"}),
                     "orvelcs: assign: -: standard input cannot be both the definition and the drawing");
}

TEST_F(AssignDefinition, MissingFile_IsNamedInTheJson)
{
    givenDrawing("plan.qedb");
    EXPECT_EQ(runForJson({"assign", "--definition", "nope", "--code", "X:1", "plan.qedb"}, 1)["error"],
              "nope: cannot be opened: No such file or directory");
}

} // namespace
} // namespace Tests
