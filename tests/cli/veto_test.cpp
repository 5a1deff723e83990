#include "command_line_test.h"

namespace Tests {
namespace {

using Veto = CommandLineTest;

TEST_F(Veto, VetoOfTheName_RefusesAnAssignment)
{
    givenDrawingWith("plan.qedb", "EPSG:4326");
    const std::string before = contents("plan.qedb");
    const auto written = std::filesystem::last_write_time(path("plan.qedb"));
    EXPECT_EQ(runForJson({"assign", "--veto", "named", "EPSG:25832", "plan.qedb"}, 1),
              Json({{"file", "plan.qedb"},
                    {"result", 325},
                    {"status", 0},
                    {"events", {event("willChange", "EPSG:25832"), event("vetoed", "EPSG:25832")}},
                    {"error", errorMember("assign", "plan.qedb", 325, "eVetoed",
                                          "eVetoed (325): a reactor vetoed the change")}}));
    EXPECT_EQ(contents("plan.qedb"), before);
    EXPECT_EQ(std::filesystem::last_write_time(path("plan.qedb")), written);
}

TEST_F(Veto, VetoOfTheRemoval_RefusesAnAssignmentWhoseNameWasAccepted)
{
    givenDrawingWith("plan.qedb", "EPSG:4326");
    const std::string before = contents("plan.qedb");
    const Json json = runForJson({"assign", "--veto", "removal", "EPSG:25832", "plan.qedb"}, 1);
    EXPECT_EQ(json["result"], 325);
    EXPECT_EQ(json["events"],
              Json::array({event("willChange", "EPSG:25832"), event("willChange", nullptr), event("vetoed", nullptr)}));
    EXPECT_EQ(contents("plan.qedb"), before);
}

TEST_F(Veto, VetoOfTheRemoval_RefusesClearing)
{
    givenDrawingWith("plan.qedb", "EPSG:4326");
    const std::string before = contents("plan.qedb");
    const Json json = runForJson({"clear", "plan.qedb", "--veto", "removal"}, 1);
    EXPECT_EQ(json["result"], 325);
    EXPECT_EQ(json["events"], Json::array({event("willChange", nullptr), event("vetoed", nullptr)}));
    EXPECT_EQ(contents("plan.qedb"), before);
}

TEST_F(Veto, VetoOfTheName_DoesNotPreventClearing)
{
    givenDrawingWith("plan.qedb", "EPSG:4326");
    EXPECT_EQ(runForJson({"clear", "--veto", "named", "plan.qedb"})["result"], 0);
}

TEST_F(Veto, VetoOfTheName_RefusesClearingAsAnAssignment)
{
    givenDrawingWith("plan.qedb", "EPSG:4326");
    const Json json = runForJson({"clear", "--as-assignment", "--veto", "named", "plan.qedb"}, 1);
    EXPECT_EQ(json["events"], Json::array({event("willChange", ""), event("vetoed", "")}));
}

TEST_F(Veto, Refusal_IsReportedInOneLine)
{
    givenDrawing("plan.qedb");
    expectResult(run({"assign", "--veto", "named", "--events", "EPSG:25832", "plan.qedb"}), 1,
                 "plan.qedb: willChange EPSG:25832\nplan.qedb: vetoed EPSG:25832\n",
                 "orvelcs: assign: plan.qedb: eVetoed (325): a reactor vetoed the change\n");
}

TEST_F(Veto, VetoOption_CanBeGivenTwice)
{
    givenDrawing("plan.qedb");
    EXPECT_EQ(run({"assign", "--veto", "named", "--veto", "removal", "EPSG:25832", "plan.qedb"}).status, 1);
}

TEST_F(Veto, UnknownKindOfVeto_IsWrongUsage)
{
    expectWrongUsage(run({"assign", "--veto", "name", "EPSG:25832", "plan.qedb"}),
                     "orvelcs: assign: --veto: expected named or removal, found name; the nearest is named");
}

} // namespace
} // namespace Tests
