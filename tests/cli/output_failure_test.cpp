#include "command_line_test.h"

namespace Tests {
namespace {

/// Results that cannot be written are a failure of every command.
class OutputFailure : public CommandLineTest {
protected:
    void expectFailure(const std::vector<std::string>& arguments, const std::string& command,
                       const std::string& input = "") const
    {
        for (const auto& [target, reason] : unwritableOutputs()) {
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

TEST_F(OutputFailure, OfConvert)
{
    givenDrawingWith("plan.qedb", "EPSG:4326");
    expectFailure({"convert", "plan.qedb", "--to", "33"}, "convert");
    expectFailure({"convert", "plan.qedb", "--to", "29", "-o", "-"}, "convert");
    EXPECT_EQ(runForJson({"show", "plan.qedb"})["drawingVersion"], 33);
}

TEST_F(OutputFailure, OfEncodeAndDecode)
{
    expectFailure({"encode", "EPSG:4326", "--drawing-version", "33"}, "encode");
    expectFailure({"decode"}, "decode", run({"encode", "EPSG:4326", "--drawing-version", "33"}).output);
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
    EXPECT_THAT(drawing("plan.qedb"), testing::StartsWith("drawing version 33\n"));
}

TEST_F(OutputFailure, OfAnUnavailableCatalog_IsToldAsSuch)
{
    givenDrawing("a.qedb");
    const ProgramResult search = runWithoutCatalog({"catalog", "search", "utm"});
    EXPECT_EQ(search.status, 1);
    EXPECT_THAT(
        search.errors,
        testing::StartsWith("orvelcs: catalog search: utm: the catalog cannot be read: there is no proj.db in "));
    const ProgramResult assign = runWithoutCatalog({"assign", "EPSG:4326", "a.qedb"});
    EXPECT_EQ(assign.status, 1);
    EXPECT_THAT(assign.errors, testing::StartsWith("orvelcs: assign: a.qedb: eInvalidInput (3): the catalog cannot be "
                                                   "read: there is no proj.db in "));
    EXPECT_THAT(assign.errors, testing::EndsWith(": statusCatalogUnavailable (46)\n"));
}

TEST_F(OutputFailure, OfAnUnavailableCatalog_IsNotTakenForAnUnknownAuthorityOrCode)
{
    const ProgramResult search = runWithoutCatalog({"catalog", "search", "--authority", "EPSG", "utm"});
    EXPECT_EQ(search.status, 1);
    EXPECT_THAT(search.errors, testing::HasSubstr("the catalog cannot be read: there is no proj.db in "));
}

} // namespace
} // namespace Tests
