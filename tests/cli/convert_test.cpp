#include "command_line_test.h"

namespace Tests {
namespace {

class ConvertCommand : public CommandLineTest {
protected:
    static Json success(const std::string& file, int version)
    {
        return {{"file", file}, {"drawingVersion", version}, {"result", 0}, {"events", Json::array()}};
    }
    static Json failure(const std::string& what, int result, const std::string& name, const std::string& message)
    {
        return {{"file", "plan.qedb"},
                {"drawingVersion", nullptr},
                {"result", result},
                {"events", Json::array()},
                {"error",
                 {{"command", "convert"}, {"what", what}, {"code", result}, {"name", name}, {"message", message}}}};
    }

    /// Creates a drawing whose system has a name that is too long to be packed.
    void givenDrawingWithALargeSystem(const std::string& name) const
    {
        std::string systemName;
        for (int word = 0; word < 300; ++word)
            systemName += "w" + std::to_string(word * 7919 % 997) + " ";
        given("large.wkt", "GEOGCRS[\"" + systemName +
                               "\",DATUM[\"Works\",ELLIPSOID[\"Works\",6378000,300]],CS[ellipsoidal,2],"
                               "AXIS[\"latitude\",north],AXIS[\"longitude\",east],"
                               "ANGLEUNIT[\"degree\",0.0174532925199433]]");
        givenDrawing(name);
        const ProgramResult result = run({"assign", "--quiet", "--definition", "large.wkt", "--code", "WORKS:1", name});
        ASSERT_EQ(result.status, 0) << result.errors;
        std::filesystem::remove(path("large.wkt"));
    }

    void givenUnreadableDrawing(const std::string& name) const
    {
        givenDrawing(name);
        ASSERT_EQ(run({"forms", name, "--put", "geodata=no definition"}).status, 0);
    }
};

TEST_F(ConvertCommand, OlderVersion_StoresTheOlderForms)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    EXPECT_EQ(runForJson({"convert", "plan.qedb", "--to", "29"}), success("plan.qedb", 29));
    const Json forms = runForJson({"forms", "plan.qedb"});
    EXPECT_EQ(forms["drawingVersion"], 29);
    EXPECT_EQ(forms["legacyProjection"], Json({{"code", "EPSG:25832"}}));
    EXPECT_EQ(forms["definitionXrecord"]["layout"], 1);
    EXPECT_EQ(forms["definitionXrecord"]["definitions"],
              Json::array({{{"type", "CoordinateReferenceSystemDefinition"}, {"code", "EPSG:25832"}},
                           {{"type", "DatumDefinition"}, {"code", "EPSG:6258"}},
                           {{"type", "EllipsoidDefinition"}, {"code", "EPSG:7019"}}}));
    EXPECT_THAT(forms["geoData"]["text"].get<std::string>(), testing::StartsWith("PROJCS[\"ETRS89 / UTM zone 32N\""));
}

TEST_F(ConvertCommand, NewerVersion_StoresOnlyTheGeoDataText)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const Json before = runForJson({"forms", "plan.qedb"});
    ASSERT_EQ(run({"convert", "plan.qedb", "--to", "21"}).status, 0);
    EXPECT_EQ(runForJson({"convert", "plan.qedb", "--to", "33"}), success("plan.qedb", 33));
    EXPECT_EQ(runForJson({"forms", "plan.qedb"}), before);
}

TEST_F(ConvertCommand, ConvertedDrawing_ShowsTheSameSystem)
{
    givenDrawingWith("plan.qedb", "EPSG:2263");
    Json shown = runForJson({"show", "plan.qedb", "--wkt"});
    ASSERT_EQ(run({"convert", "plan.qedb", "--to", "25"}).status, 0);
    shown["drawingVersion"] = 25;
    shown["source"] = "legacy";
    EXPECT_EQ(runForJson({"show", "plan.qedb", "--wkt"}), shown);
}

TEST_F(ConvertCommand, Conversion_IsConfirmedInOneLine)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    expectResult(run({"convert", "plan.qedb", "--to", "29"}), 0, "plan.qedb: converted to drawing version 29\n", "");
    expectResult(run({"convert", "plan.qedb", "--to", "33", "-o", "new.qedb"}), 0,
                 "plan.qedb: converted to drawing version 33, in new.qedb\n", "");
    expectResult(run({"convert", "-q", "plan.qedb", "--to", "33"}), 0, "", "");
}

TEST_F(ConvertCommand, EmptyDrawing_IsConverted)
{
    givenDrawing("plan.qedb");
    givenDrawing("older.qedb", 24);
    EXPECT_EQ(runForJson({"convert", "plan.qedb", "--to", "33"}), success("plan.qedb", 33));
    EXPECT_EQ(runForJson({"convert", "older.qedb", "--to", "24"}), success("older.qedb", 24));
    EXPECT_EQ(runForJson({"convert", "plan.qedb", "--to", "24"}), success("plan.qedb", 24));
    EXPECT_EQ(runForJson({"show", "plan.qedb"}, 3)["drawingVersion"], 24);
}

TEST_F(ConvertCommand, OutputOption_LeavesTheDrawingUnchanged)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const std::string before = contents("plan.qedb");
    EXPECT_EQ(runForJson({"convert", "plan.qedb", "--to", "29", "-o", "old.qedb"}), success("plan.qedb", 29));
    EXPECT_EQ(contents("plan.qedb"), before);
    ASSERT_EQ(run({"convert", "plan.qedb", "--to", "29"}).status, 0);
    EXPECT_EQ(drawing("old.qedb"), drawing("plan.qedb"));
    EXPECT_EQ(files(), (std::vector<std::string>{"old.qedb", "plan.qedb"}));
}

TEST_F(ConvertCommand, ExistingOutput_IsReplacedOnlyWithForce)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    givenDrawing("old.qedb");
    const std::string before = contents("old.qedb");
    expectResult(run({"convert", "plan.qedb", "--to", "29", "--output", "old.qedb"}), 1, "",
                 "orvelcs: convert: old.qedb: exists; --force overwrites it\n");
    EXPECT_EQ(contents("old.qedb"), before);
    ASSERT_EQ(run({"convert", "plan.qedb", "--to", "29", "--output", "old.qedb", "--force"}).status, 0);
    EXPECT_EQ(runForJson({"show", "old.qedb"})["code"], "EPSG:25832");
    EXPECT_EQ(files(), (std::vector<std::string>{"old.qedb", "plan.qedb"}));
}

TEST_F(ConvertCommand, OutputThatIsNotADrawing_IsNotReplaced)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    given("old.qedb", "something else");
    expectResult(run({"convert", "plan.qedb", "--to", "29", "-o", "old.qedb", "--force"}), 1, "",
                 "orvelcs: convert: old.qedb: eFileDamaged (51): not a drawing file: it is not an SQLite database; "
                 "only drawings "
                 "are overwritten\n");
    EXPECT_EQ(contents("old.qedb"), "something else");
    EXPECT_EQ(files(), (std::vector<std::string>{"old.qedb", "plan.qedb"}));
}

TEST_F(ConvertCommand, EmptyOutputFile_CountsAsAbsent)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    given("old.qedb", "");
    ASSERT_EQ(run({"convert", "plan.qedb", "--to", "29", "-o", "old.qedb"}).status, 0);
    EXPECT_EQ(runForJson({"show", "old.qedb"})["code"], "EPSG:25832");
}

TEST_F(ConvertCommand, OutputThatIsTheDrawingItself_ReplacesIt)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    ASSERT_EQ(run({"convert", "plan.qedb", "--to", "29", "-o", "./plan.qedb"}).status, 0);
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["source"], "legacy");
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(ConvertCommand, DashAsOutput_PrintsTheDrawing)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    ASSERT_EQ(run({"convert", "plan.qedb", "--to", "29", "-o", "old.qedb"}).status, 0);
    expectPrinted(run({"convert", "plan.qedb", "--to", "29", "-o", "-"}), "old.qedb");
}

TEST_F(ConvertCommand, DashAsFile_ReadsStandardInputAndPrintsTheDrawing)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    ASSERT_EQ(run({"convert", "plan.qedb", "--to", "29", "-o", "old.qedb"}).status, 0);
    expectPrinted(run({"convert", "-", "--to", "29"}, contents("plan.qedb")), "old.qedb");
}

TEST_F(ConvertCommand, DashAsFileWithAnOutput_WritesTheOutput)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    expectResult(run({"convert", "-", "--to", "29", "-o", "old.qedb"}, contents("plan.qedb")), 0,
                 "-: converted to drawing version 29, in old.qedb\n", "");
    EXPECT_EQ(runForJson({"show", "old.qedb"})["source"], "legacy");
}

TEST_F(ConvertCommand, Conversion_SendsNoEventAndCannotBeVetoed)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    expectResult(run({"convert", "--events", "--veto", "named", "--veto", "removal", "plan.qedb", "--to", "29"}), 0,
                 "plan.qedb: converted to drawing version 29\n", "");
}

TEST_F(ConvertCommand, UnreadableSystem_IsRefusedAndTheDrawingUnchanged)
{
    givenUnreadableDrawing("plan.qedb");
    const std::string before = contents("plan.qedb");
    const std::string error = "eInvalidInput (3): the drawing's contents cannot be converted for drawing version 29 "
                              "(status 3): its coordinate system cannot be read";
    expectResult(run({"convert", "plan.qedb", "--to", "29"}), 1, "", "orvelcs: convert: plan.qedb: " + error + "\n");
    EXPECT_EQ(runForJson({"convert", "plan.qedb", "--to", "29"}, 1), failure("plan.qedb", 3, "eInvalidInput", error));
    EXPECT_EQ(contents("plan.qedb"), before);
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(ConvertCommand, SystemTooLargeForTheOlderForms_IsRefusedAndTheDrawingUnchanged)
{
    givenDrawingWithALargeSystem("plan.qedb");
    const std::string before = contents("plan.qedb");
    const std::string error = "eInvalidResbuf (7): the drawing's contents cannot be converted for drawing version 29 "
                              "(status 7): WORKS:1 does not fit into the older forms";
    expectResult(run({"convert", "plan.qedb", "--to", "29"}), 1, "", "orvelcs: convert: plan.qedb: " + error + "\n");
    EXPECT_EQ(runForJson({"convert", "plan.qedb", "--to", "29"}, 1), failure("plan.qedb", 7, "eInvalidResbuf", error));
    EXPECT_EQ(contents("plan.qedb"), before);
    EXPECT_EQ(run({"convert", "plan.qedb", "--to", "30"}).status, 0);
}

TEST_F(ConvertCommand, RefusedConversion_LeavesTheOutputUnchanged)
{
    givenUnreadableDrawing("plan.qedb");
    given("old.qedb", "something else");
    EXPECT_EQ(run({"convert", "plan.qedb", "--to", "29", "-o", "old.qedb"}).status, 1);
    EXPECT_EQ(run({"convert", "plan.qedb", "--to", "29", "-o", "older.qedb"}).status, 1);
    EXPECT_EQ(contents("old.qedb"), "something else");
    EXPECT_EQ(files(), (std::vector<std::string>{"old.qedb", "plan.qedb"}));
}

TEST_F(ConvertCommand, RefusedConversion_PrintsNoDrawing)
{
    givenUnreadableDrawing("plan.qedb");
    expectResult(run({"convert", "plan.qedb", "--to", "29", "-o", "-"}), 1, "",
                 testing::StartsWith("orvelcs: convert: plan.qedb: eInvalidInput (3): "));
}

TEST_F(ConvertCommand, OutputThatIsAFolder_IsRefused)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const std::string before = contents("plan.qedb");
    std::filesystem::create_directory(path("folder"));
    const std::string error = "eFileWriteFailed (54): is a folder";
    expectResult(run({"convert", "plan.qedb", "--to", "29", "-o", "folder"}), 1, "",
                 "orvelcs: convert: folder: " + error + "\n");
    EXPECT_EQ(runForJson({"convert", "plan.qedb", "--to", "29", "-o", "folder"}, 1),
              failure("folder", 54, "eFileWriteFailed", error));
    EXPECT_EQ(contents("plan.qedb"), before);
    EXPECT_EQ(files(), (std::vector<std::string>{"folder", "plan.qedb"}));
}

TEST_F(ConvertCommand, FileThatIsNotADrawing_IsRefused)
{
    given("plan.qedb", "not a drawing");
    const Json json = runForJson({"convert", "plan.qedb", "--to", "29"}, 1);
    EXPECT_EQ(json["result"], 51);
    EXPECT_EQ(json["drawingVersion"], nullptr);
    EXPECT_EQ(json["events"], Json::array());
    EXPECT_EQ(contents("plan.qedb"), "not a drawing");
    EXPECT_EQ(runForJson({"convert", "missing.qedb", "--to", "29"}, 1)["result"], 50);
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(ConvertCommand, UnknownVersion_IsWrongUsage)
{
    for (const std::string version : {"20", "34", "-1", "29.5", "new"})
        expectWrongUsage(run({"convert", "plan.qedb", "--to=" + version}),
                         "orvelcs: convert: --drawing-version: expected a whole number from 21 to 33, found " +
                             version);
}

TEST_F(ConvertCommand, MissingArguments_AreWrongUsage)
{
    expectWrongUsage(run({"convert"}), "orvelcs: convert: FILE: is required");
    expectWrongUsage(run({"convert", "plan.qedb"}), "orvelcs: convert: --drawing-version: is required");
    expectWrongUsage(run({"convert", "a.qedb", "b.qedb", "--to", "29"}),
                     "orvelcs: convert: b.qedb: one argument too many");
    expectWrongUsage(run({"convert", "", "--to", "29"}), "orvelcs: convert: FILE: is empty");
    expectWrongUsage(run({"convert", "a.qedb", "--to", "29", "-o", ""}), "orvelcs: convert: -o: is empty");
}

TEST_F(ConvertCommand, PrintedDrawingWithJsonOrEvents_IsWrongUsage)
{
    const std::string line = "orvelcs: convert: -: the drawing itself goes to standard output, where ";
    expectWrongUsageAsJson(run({"convert", "-", "--to", "29", "--json"}), line + "--json has no place");
    expectWrongUsage(run({"convert", "a.qedb", "--to", "29", "-o", "-", "--events"}), line + "--events has no place");
}

} // namespace
} // namespace Tests
