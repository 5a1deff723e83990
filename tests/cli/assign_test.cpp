#include "command_line_test.h"

namespace Tests {
namespace {

class AssignCommand : public CommandLineTest {
protected:
    /// The events of an assignment.
    static Json events(const std::string& code)
    {
        return Json::array({event("willChange", code), event("willChange", nullptr), event("changed", nullptr),
                            event("changed", code)});
    }
};

TEST_F(AssignCommand, CatalogCode_IsAssigned)
{
    givenDrawing("plan.qedb");
    EXPECT_EQ(runForJson({"assign", "EPSG:25832", "plan.qedb"}),
              Json({{"file", "plan.qedb"}, {"result", 0}, {"status", 0}, {"events", events("EPSG:25832")}}));
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["code"], "EPSG:25832");
}

TEST_F(AssignCommand, Assignment_IsConfirmedInOneLine)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "EPSG:25832", "plan.qedb"}), 0, "plan.qedb: assigned EPSG:25832\n", "");
}

TEST_F(AssignCommand, EventsOption_PrintsTheEventsInOrder)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "--events", "EPSG:25832", "plan.qedb"}), 0,
                 "plan.qedb: willChange EPSG:25832\n"
                 "plan.qedb: willChange null\n"
                 "plan.qedb: changed null\n"
                 "plan.qedb: changed EPSG:25832\n"
                 "plan.qedb: assigned EPSG:25832\n",
                 "");
}

TEST_F(AssignCommand, QuietAndEventsOptions_PrintOnlyTheEvents)
{
    givenDrawing("plan.qedb");
    expectResult(run({"-q", "assign", "--events", "EPSG:4326", "plan.qedb"}), 0,
                 "plan.qedb: willChange EPSG:4326\n"
                 "plan.qedb: willChange null\n"
                 "plan.qedb: changed null\n"
                 "plan.qedb: changed EPSG:4326\n",
                 "");
}

TEST_F(AssignCommand, CodeInAnotherCase_AssignsTheCatalogSystem)
{
    givenDrawing("plan.qedb");
    EXPECT_EQ(runForJson({"assign", "epsg:25832", "plan.qedb"})["events"], events("EPSG:25832"));
}

TEST_F(AssignCommand, RepeatedAssignment_LeavesTheDrawingUnchanged)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const std::string before = drawing("plan.qedb");
    EXPECT_EQ(run({"assign", "EPSG:25832", "plan.qedb"}).status, 0);
    EXPECT_EQ(drawing("plan.qedb"), before);
}

TEST_F(AssignCommand, UnknownCode_IsRefusedWithTheNearestCodes)
{
    givenDrawing("plan.qedb");
    const std::string before = contents("plan.qedb");
    const ProgramResult result = run({"assign", "EPGS:25832", "plan.qedb"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors,
                testing::StartsWith("orvelcs: assign: EPGS:25832: eInvalidInput (3): the catalog has no EPGS:25832; "
                                    "the nearest "));
    EXPECT_THAT(result.errors, testing::HasSubstr("EPSG:25832"));
    EXPECT_EQ(contents("plan.qedb"), before);
}

TEST_F(AssignCommand, UnknownCode_ReportsTheModulesResultAndStatusInJson)
{
    givenDrawing("plan.qedb");
    const Json json = runForJson({"assign", "EPSG:2583200", "plan.qedb"}, 1);
    EXPECT_EQ(json["result"], 3);
    EXPECT_EQ(json["status"], 52);
    EXPECT_EQ(json["events"], Json::array());
    EXPECT_EQ(json["error"]["name"], "eInvalidInput");
    EXPECT_THAT(json["error"]["message"].get<std::string>(), testing::StartsWith("eInvalidInput (3): "));
}

TEST_F(AssignCommand, DeprecatedCode_IsAssignedWithANote)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "EPSG:3785", "plan.qedb"}), 0, "plan.qedb: assigned EPSG:3785\n",
                 "orvelcs: assign: EPSG:3785: note: deprecated; replaced by EPSG:3857\n");
}

TEST_F(AssignCommand, QuietOption_SuppressesTheNoteAboutADeprecatedCode)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "--quiet", "EPSG:3785", "plan.qedb"}), 0, "", "");
}

TEST_F(AssignCommand, Batch_ContinuesAfterAFailure)
{
    givenDrawing("a.qedb");
    given("b.qedb", "not a drawing");
    givenDrawing("c.qedb");
    const Json json = runForJson({"assign", "EPSG:25832", "a.qedb", "b.qedb", "missing.qedb", "c.qedb"}, 1);
    ASSERT_EQ(json.size(), 4U);
    EXPECT_EQ(json[0]["result"], 0);
    EXPECT_EQ(json[1]["result"], 51);
    EXPECT_EQ(json[1]["events"], Json::array());
    EXPECT_EQ(json[2]["result"], 50);
    EXPECT_EQ(json[3]["result"], 0);
    EXPECT_EQ(contents("b.qedb"), "not a drawing");
    EXPECT_EQ(runForJson({"show", "c.qedb"})["code"], "EPSG:25832");
    EXPECT_EQ(files(), (std::vector<std::string>{"a.qedb", "b.qedb", "c.qedb"}));
}

TEST_F(AssignCommand, DrawingNamedTwice_IsAssignedTwice)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "EPSG:25832", "plan.qedb", "plan.qedb"}), 0,
                 "plan.qedb: assigned EPSG:25832\nplan.qedb: assigned EPSG:25832\n", "");
}

TEST_F(AssignCommand, DashAsFile_ReadsStandardInputAndPrintsTheDrawing)
{
    givenDrawing("empty.qedb");
    givenDrawingWith("plan.qedb", "EPSG:25832");
    expectPrinted(run({"assign", "EPSG:25832", "-"}, contents("empty.qedb")), "plan.qedb");
}

TEST_F(AssignCommand, DashAsFile_PrintsAnOlderDrawingWithTheOlderForms)
{
    givenDrawing("plan.qedb", 25);
    const std::string empty = contents("plan.qedb");
    ASSERT_EQ(run({"assign", "EPSG:25832", "plan.qedb"}).status, 0);
    expectPrinted(run({"assign", "EPSG:25832", "-"}, empty), "plan.qedb");
}

TEST_F(AssignCommand, DashAsFileWithAnUnknownCode_PrintsNothing)
{
    givenDrawing("empty.qedb");
    const ProgramResult result = run({"assign", "NO:1", "-"}, contents("empty.qedb"));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
}

TEST_F(AssignCommand, DashAsFileWithOtherFilesOrEvents_IsWrongUsage)
{
    expectWrongUsage(run({"assign", "EPSG:25832", "-", "b.qedb"}),
                     "orvelcs: assign: -: stands for the only drawing, not for one of several");
    expectWrongUsage(run({"assign", "EPSG:25832", "-", "--events"}),
                     "orvelcs: assign: -: the drawing itself goes to standard output, where --events has no place");
}

TEST_F(AssignCommand, EmptyCode_IsWrongUsage)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    expectWrongUsage(run({"assign", "", "plan.qedb"}),
                     "orvelcs: assign: SYSTEM: is empty; to remove a coordinate system use clear");
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["code"], "EPSG:25832");
}

TEST_F(AssignCommand, MissingArguments_AreWrongUsage)
{
    expectWrongUsage(run({"assign"}), "orvelcs: assign: SYSTEM: is required");
    expectWrongUsage(run({"assign", "EPSG:25832"}), "orvelcs: assign: FILE: is required after SYSTEM");
}

TEST_F(AssignCommand, OlderDrawing_IsSavedInTheOlderForms)
{
    givenDrawing("plan.qedb", 25);
    ASSERT_EQ(run({"assign", "EPSG:25832", "plan.qedb"}).status, 0);
    const Json forms = runForJson({"forms", "plan.qedb"});
    EXPECT_EQ(forms["drawingVersion"], 25);
    EXPECT_EQ(forms["legacyProjection"], Json({{"code", "EPSG:25832"}}));
    EXPECT_EQ(forms["definitionXrecord"]["layout"], 1);
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["source"], "legacy");
}

TEST_F(AssignCommand, CodeInAnotherCase_IsPrintedAsTheCatalogSpellsIt)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "epsg:25832", "plan.qedb"}), 0, "plan.qedb: assigned EPSG:25832\n", "");
}

} // namespace
} // namespace Tests
