#include "command_line_test.h"

namespace Tests {
namespace {

struct FailingCommand {
    const char* test;
    Arguments arguments;
    const char* name; // as messages print it
    std::string input = "";
};

const FailingCommand kFailingCommands[] = {
    {"New", {"new", "--force", "new.qedb"}, "new"},
    {"NewToStandardOutput", {"new", "-"}, "new"},
    {"Clear", {"clear", "--json", "plan.qedb"}, "clear"},
    {"Show", {"show", "plan.qedb"}, "show"},
    {"Forms", {"forms", "plan.qedb"}, "forms"},
    {"Convert", {"convert", "plan.qedb", "--to", "33"}, "convert"},
    {"Export", {"export", "plan.qedb", "-o", "-"}, "export"},
    {"Encode", {"encode", "EPSG:4326", "--drawing-version", "33"}, "encode"},
    {"CatalogSearch", {"catalog", "search", "UTM"}, "catalog search"},
    {"CatalogShow", {"catalog", "show", "EPSG:4326"}, "catalog show"},
    {"Codec", {"codec", "pack"}, "codec pack", std::string(200000, 'x') + "yz"},
    {"Help", {"--help"}, "command line"},
    {"Version", {"--version"}, "command line"},
};

class OutputFailure : public CommandLineTest {
protected:
    ProgramResult runInto(OutputTarget target, const FailingCommand& command) const
    {
        ProgramRun programRun;
        programRun.arguments = command.arguments;
        programRun.input = command.input;
        programRun.target = target;
        return run(programRun);
    }
    /// Expects a message for what cannot be written, and a silent end where nobody reads.
    void expectFailure(const FailingCommand& command) const
    {
        for (const auto& [target, reason] : unwritableOutputs())
            expectResult(runInto(target, command), 1, "",
                         std::string("orvelcs: ") + command.name + ": standard output: cannot be written: " + reason +
                             "\n");
        expectResult(runInto(OutputTarget::closedPipe, command), kClosedPipeStatus, "", "");
    }
};

class CommandOutputFailure : public OutputFailure, public testing::WithParamInterface<FailingCommand> {};

TEST_P(CommandOutputFailure, UnwritableOutput_IsReported)
{
    givenDrawingWith("plan.qedb", "EPSG:4326");
    expectFailure(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Each, CommandOutputFailure, testing::ValuesIn(kFailingCommands),
                         [](const auto& command) { return std::string(command.param.test); });

TEST_F(OutputFailure, OutputOfDecode_IsReported)
{
    expectFailure({"", {"decode"}, "decode", run({"encode", "EPSG:4326", "--drawing-version", "33"}).output});
}

TEST_F(OutputFailure, AssignmentWithUnwritableOutput_IsSaved)
{
    givenDrawing("plan.qedb");
    expectFailure({"", {"assign", "EPSG:4326", "plan.qedb"}, "assign"});
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["code"], "EPSG:4326");
}

TEST_F(OutputFailure, ClosedPipe_EndsABatchAfterTheDrawingInHand)
{
    givenDrawing("a.qedb");
    givenDrawing("b.qedb");
    const FailingCommand command = {"", {"assign", "EPSG:4326", "a.qedb", "b.qedb"}, "assign"};
    expectResult(runInto(OutputTarget::closedPipe, command), kClosedPipeStatus, "", "");
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:4326");
    EXPECT_EQ(runForJson({"show", "b.qedb"}, 3)["code"], nullptr);
}

TEST_F(OutputFailure, ConversionToUnwritableOutput_LeavesTheDrawingUnchanged)
{
    givenDrawingWith("plan.qedb", "EPSG:4326");
    expectFailure({"", {"convert", "plan.qedb", "--to", "29", "-o", "-"}, "convert"});
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["drawingVersion"], 33);
}

TEST_F(OutputFailure, CommandThatPrintsNothing_SucceedsWithoutStandardOutput)
{
    ProgramRun programRun;
    programRun.arguments = {"new", "--quiet", "plan.qedb"};
    programRun.target = OutputTarget::closed;
    expectResult(run(programRun), 0, "", "");
    EXPECT_THAT(drawing("plan.qedb"), testing::StartsWith("drawing version 33\n"));
}

using UnavailableCatalog = CommandLineTest;

TEST_F(UnavailableCatalog, SearchAndAssignment_ReportTheCatalog)
{
    givenDrawing("a.qedb");
    const ProgramResult search = runWithoutCatalog({"catalog", "search", "utm"});
    EXPECT_EQ(search.status, 1);
    EXPECT_THAT(
        search.errors,
        testing::StartsWith("orvelcs: catalog search: utm: the catalog cannot be read: there is no proj.db in "));
    const ProgramResult assign = runWithoutCatalog({"assign", "EPSG:4326", "a.qedb"});
    EXPECT_EQ(assign.status, 1);
    EXPECT_THAT(assign.errors,
                testing::StartsWith("orvelcs: assign: EPSG:4326: eInvalidInput (3): the catalog cannot be "
                                    "read: there is no proj.db in "));
    EXPECT_THAT(assign.errors, testing::EndsWith(": statusCatalogUnavailable (46)\n"));
}

TEST_F(UnavailableCatalog, SearchWithAnAuthority_ReportsTheCatalog)
{
    expectResult(runWithoutCatalog({"catalog", "search", "--authority", "EPSG", "utm"}), 1, "",
                 testing::HasSubstr("the catalog cannot be read: there is no proj.db in "));
}

} // namespace
} // namespace Tests
