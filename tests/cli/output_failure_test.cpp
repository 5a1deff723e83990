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
    EXPECT_EQ(Json::parse(contents("plan.qedb"))["drawingVersion"], 33);
}

// The shell sets the limit and becomes the program.
TEST_F(OutputFailure, OfADrawingBeyondTheLargestFileSize_LeavesTheOldOneAndNothingElse)
{
    givenDrawing("a.qedb");
    const std::string before = contents("a.qedb");
    const ProgramResult result =
        run({.arguments = {"-c", "ulimit -f 1; exec \"$0\" assign EPSG:31467 a.qedb", ORVELCS_PROGRAM},
             .input = {},
             .environment = {},
             .program = "/bin/sh"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "orvelcs: assign: a.qedb: eFileWriteFailed (54): cannot be written: File too large\n");
    EXPECT_EQ(contents("a.qedb"), before);
    EXPECT_EQ(files(), std::vector<std::string>{"a.qedb"});
}

TEST_F(OutputFailure, OfAnUnavailableCatalog_IsToldAsSuch)
{
    givenDrawing("a.qedb");
    const std::map<std::string, std::string> nowhere = {{"PROJ_LIB", "/nonexistent"}, {"PROJ_DATA", "/nonexistent"}};
    const ProgramResult search = run({.arguments = {"catalog", "search", "utm"}, .input = {}, .environment = nowhere});
    EXPECT_EQ(search.status, 1);
    EXPECT_EQ(search.errors,
              "orvelcs: catalog search: utm: the catalog cannot be opened: statusCatalogUnavailable (46)\n");
    const ProgramResult assign =
        run({.arguments = {"assign", "EPSG:4326", "a.qedb"}, .input = {}, .environment = nowhere});
    EXPECT_EQ(assign.status, 1);
    EXPECT_EQ(assign.errors, "orvelcs: assign: a.qedb: eInvalidInput (3): the catalog cannot be opened: "
                             "statusCatalogUnavailable (46)\n");
}

TEST_F(OutputFailure, OfResultsBeyondTheLargestFileSize_IsToldAsAnyOther)
{
    const auto limited = [&](const std::string& arguments, const std::string& input) {
        return run({.arguments = {"-c", "ulimit -f 1; exec \"$0\" " + arguments, ORVELCS_PROGRAM},
                    .input = input,
                    .environment = {},
                    .program = "/bin/sh"});
    };
    const ProgramResult show = limited("catalog show --json --wkt EPSG:25832", "");
    EXPECT_EQ(show.status, 1);
    EXPECT_EQ(show.errors, "orvelcs: catalog show: standard output: cannot be written: File too large\n");
    std::string bytes; // without runs, so that packing does not shorten it
    for (int index = 0; index < 2000; ++index)
        bytes.push_back(static_cast<char>(index % 251));
    const ProgramResult pack = limited("codec pack", bytes);
    EXPECT_EQ(pack.status, 1);
    EXPECT_EQ(pack.errors, "orvelcs: codec pack: standard output: cannot be written: File too large\n");
}

TEST_F(OutputFailure, OfTheCatalogsTemporaryFile_IsNotTakenForAnEmptyCatalog)
{
    const ProgramResult search =
        run({.arguments = {"-c", "ulimit -f 1; exec \"$0\" catalog search UTM", ORVELCS_PROGRAM},
             .input = {},
             .environment = {},
             .program = "/bin/sh"});
    expectResult(search, 1, "", "orvelcs: catalog search: UTM: the catalog cannot be read\n");
}

TEST_F(OutputFailure, OfAnUnavailableCatalog_IsNotTakenForAnUnknownAuthorityOrCode)
{
    const std::map<std::string, std::string> nowhere = {{"PROJ_LIB", "/nonexistent"}, {"PROJ_DATA", "/nonexistent"}};
    const auto runNowhere = [&](const std::vector<std::string>& arguments) {
        return run({.arguments = arguments, .input = {}, .environment = nowhere});
    };
    const ProgramResult search = runNowhere({"catalog", "search", "--authority", "EPSG", "utm"});
    EXPECT_EQ(search.status, 1);
    EXPECT_THAT(search.errors, testing::HasSubstr("the catalog cannot be opened: statusCatalogUnavailable (46)"));
}

} // namespace
} // namespace Tests
