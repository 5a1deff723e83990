#include "command_line_test.h"

namespace Tests {
namespace {

using ClearCommand = CommandLineTest;

TEST_F(ClearCommand, CoordinateSystem_IsRemoved)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    EXPECT_EQ(runForJson({"clear", "plan.qedb"}),
              Json({{"file", "plan.qedb"},
                    {"result", 0},
                    {"status", 0},
                    {"events", {event("willChange", nullptr), event("changed", nullptr)}}}));
    EXPECT_EQ(run({"show", "plan.qedb"}).status, 3);
}

TEST_F(ClearCommand, AsAssignmentOption_SendsEventsWithAnEmptyName)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const Json json = runForJson({"clear", "--as-assignment", "plan.qedb"});
    EXPECT_EQ(json["events"], Json::array({event("willChange", ""), event("willChange", nullptr),
                                           event("changed", nullptr), event("changed", "")}));
    EXPECT_EQ(run({"show", "plan.qedb"}).status, 3);
}

TEST_F(ClearCommand, EmptyNameInEvents_IsPrintedInQuotes)
{
    givenDrawing("plan.qedb");
    expectResult(run({"clear", "--as-assignment", "--events", "plan.qedb"}), 0,
                 "plan.qedb: willChange \"\"\n"
                 "plan.qedb: willChange null\n"
                 "plan.qedb: changed null\n"
                 "plan.qedb: changed \"\"\n"
                 "plan.qedb: cleared\n",
                 "");
}

TEST_F(ClearCommand, DrawingWithoutACoordinateSystem_IsClearedSuccessfully)
{
    givenDrawing("plan.qedb");
    expectResult(run({"clear", "plan.qedb"}), 0, "plan.qedb: cleared\n", "");
}

TEST_F(ClearCommand, EveryForm_IsRemoved)
{
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"forms", "plan.qedb", "--put", "legacy=EPSG:4326", "xrecord-chain=[]", "geodata=x"}).status, 0);
    ASSERT_EQ(run({"clear", "plan.qedb"}).status, 0);
    const Json forms = runForJson({"forms", "plan.qedb"});
    EXPECT_EQ(forms["legacyProjection"], nullptr);
    EXPECT_EQ(forms["definitionXrecord"], nullptr);
    EXPECT_EQ(forms["geoData"]["text"], "");
}

TEST_F(ClearCommand, Batch_PrintsAJsonArray)
{
    givenDrawing("a.qedb");
    const Json json = runForJson({"clear", "missing.qedb", "a.qedb"}, 1);
    ASSERT_EQ(json.size(), 2U);
    EXPECT_EQ(json[0]["file"], "missing.qedb");
    EXPECT_EQ(json[0]["result"], 50);
    EXPECT_EQ(json[1]["result"], 0);
}

} // namespace
} // namespace Tests
