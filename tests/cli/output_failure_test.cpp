#include "command_line_test.h"

namespace Tests {
namespace {

/// Results that cannot be written are a failure of every command.
class OutputFailure : public CommandLineTest {
protected:
    void expectFailure(const std::vector<std::string>& arguments, const std::string& command,
                       const std::string& input = "") const
    {
        const std::vector<std::pair<OutputTarget, std::string>> targets = {
            {OutputTarget::full, "No space left on device"},
            {OutputTarget::closed, "Bad file descriptor"},
            {OutputTarget::closedPipe, "Broken pipe"}};
        for (const auto& [target, reason] : targets) {
            ProgramRun programRun;
            programRun.arguments = arguments;
            programRun.input = input;
            programRun.target = target;
            expectResult(run(programRun), 1, "",
                         "orvelcs: " + command + ": standard output: cannot be written: " + reason + "\n");
        }
    }
};

TEST_F(OutputFailure, OfNew)
{
    expectFailure({"new", "--force", "plan.qedb"}, "new");
    expectFailure({"new", "-"}, "new");
}

TEST_F(OutputFailure, OfAssign)
{
    givenDrawing("plan.qedb");
    expectFailure({"assign", "EPSG:4326", "plan.qedb"}, "assign");
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["code"], "EPSG:4326");
}

TEST_F(OutputFailure, OfClear)
{
    givenDrawing("plan.qedb");
    expectFailure({"clear", "--json", "plan.qedb"}, "clear");
}

TEST_F(OutputFailure, OfShow)
{
    givenDrawingWith("plan.qedb", "EPSG:4326");
    expectFailure({"show", "plan.qedb"}, "show");
}

TEST_F(OutputFailure, OfForms)
{
    givenDrawing("plan.qedb");
    expectFailure({"forms", "plan.qedb"}, "forms");
}

TEST_F(OutputFailure, OfTheCatalog)
{
    expectFailure({"catalog", "search", "UTM"}, "catalog search");
    expectFailure({"catalog", "show", "EPSG:4326"}, "catalog show");
}

TEST_F(OutputFailure, OfTheCodec)
{
    expectFailure({"codec", "pack"}, "codec pack", std::string(200000, 'x') + "yz");
}

TEST_F(OutputFailure, OfHelpAndVersion)
{
    expectFailure({"--help"}, "command line");
    expectFailure({"--version"}, "command line");
}

TEST_F(OutputFailure, CommandThatPrintsNothing_NeedsNoOutput)
{
    ProgramRun programRun;
    programRun.arguments = {"new", "--quiet", "plan.qedb"};
    programRun.target = OutputTarget::closed;
    expectResult(run(programRun), 0, "", "");
    EXPECT_EQ(Json::parse(contents("plan.qedb"))["drawingVersion"], 33);
}

} // namespace
} // namespace Tests
