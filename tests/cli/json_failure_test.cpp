#include "command_line_test.h"

namespace Tests {
namespace {

using JsonFailure = CommandLineTest;

TEST_F(JsonFailure, WrongUsage_IsADocumentBesideTheLine)
{
    const ProgramResult result = run({"--json", "shwo"});
    expectWrongUsageAsJson(result, "orvelcs: command line: shwo: no such command; the nearest is show");
    EXPECT_EQ(Json::parse(result.output), (Json{{"error",
                                                 {{"command", "command line"},
                                                  {"what", "shwo"},
                                                  {"code", nullptr},
                                                  {"name", nullptr},
                                                  {"message", "no such command; the nearest is show"}}}}));
}

TEST_F(JsonFailure, EachKindOfWrongUsage_IsADocumentBesideTheLine)
{
    const std::vector<std::pair<Arguments, std::string>> cases = {
        {{}, "command line: COMMAND: "},
        {{"show"}, "show: FILE: is required"},
        {{"show", "--kinds"}, "show: --kinds: no such option"},
        {{"assign", "EPSG:4326"}, "assign: FILE: is required after SYSTEM"},
        {{"convert", "a.qedb", "--to="}, "convert: --to: needs a value"},
        {{"convert", "a.qedb", "--to", "99"}, "convert: --drawing-version: expected a whole number"},
        {{"transform", "EPSG:4326"}, "transform: DST: is required"},
        {{"config", "get"}, "config get: --drawing: "},
        {{"catalog", "show", ""}, "catalog show: SYSTEM: is empty"},
        {{"forms", "--put", "legacy=A"}, "forms: FILE: is required"},
        {{"--user-dir", std::string(300, 'x'), "show", "a.qedb"}, "show: --user-dir: is longer"}};
    for (const auto& [arguments, line] : cases) {
        SCOPED_TRACE(line);
        const ProgramResult result = run(concatenate({"--json"}, arguments));
        EXPECT_THAT(result.errors, testing::StartsWith("orvelcs: " + line));
        expectWrongUsageAsJson(result, result.errors.substr(0, result.errors.size() - 1));
    }
}

TEST_F(JsonFailure, OptionBehindTheSeparator_AsksForNoDocument)
{
    expectWrongUsage(run({"encode", "--", "--json"}), "orvelcs: encode: --drawing-version: is required");
}

TEST_F(JsonFailure, WithoutTheOption_NothingIsPrinted)
{
    EXPECT_EQ(run({"shwo"}).output, "");
    EXPECT_EQ(run({"decode", "missing.bin"}).output, "");
}

TEST_F(JsonFailure, FailedCommand_IsADocumentWithTheCodeAndItsName)
{
    given("block.bin", "no definition");
    const ProgramResult result = run({"decode", "block.bin", "--json"});
    EXPECT_EQ(result.status, 1);
    const Json document = Json::parse(result.output);
    EXPECT_EQ(document["error"]["command"], "decode");
    EXPECT_EQ(document["error"]["what"], "block.bin");
    EXPECT_EQ(document["error"]["code"], 3);
    EXPECT_EQ(document["error"]["name"], "eInvalidInput");
    EXPECT_EQ(result.errors, errorLine(document["error"]));
}

TEST_F(JsonFailure, FailureWithoutAResultOfTheHost_HasNeitherCodeNorName)
{
    const Json document = runForJson({"decode", "missing.bin"}, 1);
    EXPECT_EQ(document["error"]["what"], "missing.bin");
    EXPECT_EQ(document["error"]["code"], nullptr);
    EXPECT_EQ(document["error"]["name"], nullptr);
}

TEST_F(JsonFailure, DrawingThatCannotBeRead_IsADocument)
{
    const Json document = runForJson({"transformation", "EPSG:4230", "EPSG:4326", "--drawing", "missing.qedb"}, 1);
    EXPECT_EQ(document["error"]["command"], "transformation");
    EXPECT_EQ(document["error"]["what"], "missing.qedb");
    EXPECT_EQ(document["error"]["code"], 50);
    EXPECT_EQ(document["error"]["name"], "eFileNotFound");
}

TEST_F(JsonFailure, ResultDocument_KeepsItsMembersAndGetsTheError)
{
    const Json document = runForJson({"convert", "missing.qedb", "--to", "29"}, 1);
    EXPECT_EQ(document["drawingVersion"], nullptr);
    EXPECT_EQ(document["result"], 50);
    EXPECT_EQ(document["error"]["name"], "eFileNotFound");
    EXPECT_EQ(document["error"]["what"], "missing.qedb");
}

TEST_F(JsonFailure, NothingFound_KeepsTheResultDocument)
{
    EXPECT_EQ(runForJson({"transformation", "EPSG:4230", "EPSG:4326"}, 3), nullptr);
    EXPECT_EQ(runForJson({"catalog", "show", "EPSG:1"}, 3), nullptr);
    EXPECT_EQ(runForJson({"catalog", "search", "nothing is called so"}, 3), Json::array());
}

TEST_F(JsonFailure, CommandWhoseOutputIsBytes_RefusesTheOptionWithADocument)
{
    const ProgramResult result = run({"codec", "unpack", "--json"}, "\xFF");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(Json::parse(result.output)["error"]["command"], "codec unpack");
}

} // namespace
} // namespace Tests
