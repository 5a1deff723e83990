#include <algorithm>
#include <iterator>
#include <regex>

#include "command_line_test.h"

namespace Tests {
namespace {

using CommandLineUsage = CommandLineTest;

const std::vector<Arguments> kCommands = {{"new"},
                                          {"assign"},
                                          {"clear"},
                                          {"show"},
                                          {"forms"},
                                          {"catalog"},
                                          {"catalog", "search"},
                                          {"catalog", "show"},
                                          {"codec"},
                                          {"codec", "pack"},
                                          {"codec", "unpack"},
                                          {"convert"},
                                          {"check"},
                                          {"dump"},
                                          {"encode"},
                                          {"decode"},
                                          {"config"},
                                          {"config", "get"},
                                          {"config", "set"},
                                          {"config", "clear"},
                                          {"config", "items"},
                                          {"config", "add"},
                                          {"transformation"},
                                          {"transformation", "list"},
                                          {"transformation", "compare"},
                                          {"transform"}};

/// The names below "Commands:" in the help, each on a line of its own.
std::vector<std::string> listedCommands(const std::string& help)
{
    static const std::regex kName("\n  ([a-z]+) ");
    const std::string list = help.substr(std::min(help.find("\nCommands:"), help.size()));
    const std::sregex_iterator first(list.begin(), list.end(), kName);
    std::vector<std::string> names;
    std::transform(first, {}, std::back_inserter(names), [](const std::smatch& name) { return name[1]; });
    return names;
}

TEST_F(CommandLineUsage, Help_ListsTheCommandsInTheirOrder_AndTheExitStatuses)
{
    for (const std::string option : {"--help", "-h"}) {
        const ProgramResult result = run({option});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        EXPECT_THAT(result.output, testing::HasSubstr("Usage: orvelcs [OPTIONS] COMMAND ..."));
        EXPECT_THAT(result.output, testing::HasSubstr("Exit status: 0 done, 1 failed"));
        EXPECT_THAT(listedCommands(result.output),
                    testing::ElementsAre("new", "assign", "clear", "show", "forms", "convert", "check", "dump",
                                         "catalog", "encode", "decode", "codec", "map", "config", "transformation",
                                         "transform"));
    }
}

TEST_F(CommandLineUsage, Help_ListsEachFileOfCommandsOnce)
{
    std::vector<std::string> registered;
    for (const auto& file : std::filesystem::directory_iterator(ORVEL_SOURCE_DIR "/tools/orvelcs/commands"))
        if (const std::string name = file.path().stem().string(); name.find('_') == std::string::npos) // no subcommand
            registered.push_back(name);
    EXPECT_THAT(listedCommands(run({"--help"}).output), testing::UnorderedElementsAreArray(registered));
}

TEST_F(CommandLineUsage, HelpOfACommand_ShowsItsUsage)
{
    for (const auto& command : kCommands) {
        const ProgramResult result = run(concatenate(command, {"--help"}));
        std::string name = "orvelcs";
        for (const std::string& word : command)
            name += " " + word;
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        EXPECT_THAT(result.output, testing::HasSubstr("Usage: " + name));
        EXPECT_THAT(result.output, testing::HasSubstr("--no-color"));
        EXPECT_THAT(result.output, testing::EndsWith("\n"));
    }
}

TEST_F(CommandLineUsage, GlobalOptionBeforeACommand_LeavesItsHelpUnchanged)
{
    EXPECT_THAT(run({"--json", "show", "--help"}).output, testing::HasSubstr("Usage: orvelcs show"));
}

TEST_F(CommandLineUsage, Version_NamesTheProgramProjAndTheCatalog)
{
    const ProgramResult result = run({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    const std::regex versions("orvelcs [0-9.]+\nPROJ [0-9.]+\nEPSG v[0-9.]+\n");
    EXPECT_TRUE(std::regex_match(result.output, versions)) << result.output;
}

TEST_F(CommandLineUsage, VersionWithACommand_NeedsNoArguments)
{
    EXPECT_EQ(run({"show", "--version"}).output, run({"--version"}).output);
}

TEST_F(CommandLineUsage, VersionAsJson_IsAnObject)
{
    const Json json = runForJson({"--version"});
    EXPECT_EQ(json.size(), 3U);
    EXPECT_THAT(json["proj"].get<std::string>(), testing::StartsWith("PROJ "));
    EXPECT_THAT(json["catalog"].get<std::string>(), testing::StartsWith("EPSG v"));
}

TEST_F(CommandLineUsage, VersionWithCheck_ChecksTheWholeCatalog)
{
    const ProgramResult result = run({"--check", "--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output, testing::EndsWith("proj.db: no damage found\n"));
    const Json check = runForJson({"--version", "--check"})["check"];
    EXPECT_THAT(check["database"].get<std::string>(), testing::EndsWith("proj.db"));
    EXPECT_EQ(check["fault"], nullptr);
}

TEST_F(CommandLineUsage, CheckWithoutVersion_IsWrongUsage)
{
    expectWrongUsage(run({"show", "a.qedb", "--check"}), "orvelcs: show: --check: goes with --version only");
}

TEST_F(CommandLineUsage, GlobalOptions_WorkBeforeAndAfterTheCommand)
{
    givenDrawing("plan.qedb");
    const ProgramResult before = run({"--json", "--no-color", "-q", "forms", "plan.qedb"});
    const ProgramResult after = run({"forms", "plan.qedb", "--json", "--no-color", "--quiet"});
    EXPECT_EQ(before.status, 0);
    EXPECT_EQ(before.output, after.output);
    EXPECT_EQ(before.errors, after.errors);
}

TEST_F(CommandLineUsage, NoCommand_IsWrongUsage)
{
    expectWrongUsage(
        run(Arguments{}),
        "orvelcs: command line: COMMAND: is required; one of new, assign, clear, show, forms, convert, check, dump, "
        "catalog, encode, decode, codec, map, config, transformation, transform");
}

TEST_F(CommandLineUsage, MisspeltCommand_IsRefusedWithTheNearest)
{
    expectWrongUsage(run({"asign", "EPSG:4326", "plan.qedb"}),
                     "orvelcs: command line: asign: no such command; the nearest is assign");
    expectWrongUsage(run({"catalog", "serach", "x"}),
                     "orvelcs: catalog: serach: no such command; the nearest is search");
}

TEST_F(CommandLineUsage, UnknownCommand_IsRefusedWithTheListOfCommands)
{
    expectWrongUsage(run({"refurbish"}), "orvelcs: command line: refurbish: no such command; there are new, assign, "
                                         "clear, show, forms, convert, check, dump, catalog, encode, decode, codec, "
                                         "map, config, transformation, transform");
}

TEST_F(CommandLineUsage, MisspeltOption_IsRefusedWithTheNearest)
{
    expectWrongUsage(run({"assign", "--evnts", "EPSG:4326", "plan.qedb"}),
                     "orvelcs: assign: --evnts: no such option; the nearest is --events");
    expectWrongUsage(run({"show", "--jsn=1", "plan.qedb"}),
                     "orvelcs: show: --jsn: no such option; the nearest is --json");
    expectWrongUsage(run({"--qiet", "show", "plan.qedb"}),
                     "orvelcs: show: --qiet: no such option; the nearest is --quiet");
    expectWrongUsage(run({"show", "-z", "plan.qedb"}), "orvelcs: show: -z: no such option");
}

TEST_F(CommandLineUsage, OptionOfAnotherCommand_IsWrongUsage)
{
    expectWrongUsage(run({"new", "--events", "plan.qedb"}), "orvelcs: new: --events: no such option");
    EXPECT_TRUE(files().empty());
}

TEST_F(CommandLineUsage, OptionWithoutItsValue_IsWrongUsage)
{
    expectWrongUsage(run({"new", "plan.qedb", "--drawing-version"}), "orvelcs: new: --drawing-version: needs a value");
}

TEST_F(CommandLineUsage, OptionGivenTwice_IsWrongUsage)
{
    expectWrongUsage(run({"new", "--drawing-version", "25", "--drawing-version", "26", "plan.qedb"}),
                     "orvelcs: new: --drawing-version: is given more than once");
}

TEST_F(CommandLineUsage, MissingFile_IsWrongUsage)
{
    for (const std::string command : {"new", "clear", "show", "forms"})
        expectWrongUsage(run({command}), "orvelcs: " + command + ": FILE: is required");
}

TEST_F(CommandLineUsage, ArgumentsAfterTwoDashes_AreNotOptions)
{
    givenDrawing("a.qedb");
    EXPECT_EQ(run({"new", "--", "-x.qedb", "--json"}).status, 0);
    EXPECT_EQ(run({"assign", "EPSG:4326", "--", "-x.qedb", "a.qedb"}).status, 0);
    EXPECT_EQ(run({"assign", "EPSG:4326", "a.qedb", "--", "-x.qedb"}).status, 0);
    EXPECT_EQ(run({"assign", "--", "EPSG:4326", "--json"}).status, 0);
    EXPECT_EQ(run({"show", "a.qedb", "--", "-x.qedb", "--json"}).status, 0);
    EXPECT_EQ(run({"clear", "-q", "--", "-x.qedb"}).status, 0);
    EXPECT_EQ(run({"catalog", "search", "UTM", "--", "-32N"}).status, 3);
}

TEST_F(CommandLineUsage, ExtraArgumentAfterTwoDashes_IsNamedUnchanged)
{
    expectResult(run({"catalog", "show", "EPSG:4326", "--", "-x"}), 2, "",
                 "orvelcs: catalog show: -x: one argument too many\n");
}

TEST_F(CommandLineUsage, TwoDashes_EndTheValuesOfAnOption)
{
    givenDrawing("a.qedb");
    givenDrawing("x=y.qedb");
    EXPECT_EQ(run({"forms", "--put", "geodata=x", "--", "x=y.qedb"}).status, 0);
    EXPECT_EQ(runForJson({"forms", "x=y.qedb"})["geoData"]["text"], "x");
    expectWrongUsage(run({"forms", "a.qedb", "--put", "geodata=x", "--", "config=y"}),
                     "orvelcs: forms: config=y: one argument too many");
    expectWrongUsage(run({"new", "--drawing-version", "--", "25"}), "orvelcs: new: --drawing-version: needs a value");
    EXPECT_EQ(files(), (std::vector<std::string>{"a.qedb", "x=y.qedb"}));
}

TEST_F(CommandLineUsage, CommandAfterTwoDashes_IsNotACommand)
{
    expectWrongUsage(run({"catalog", "--", "search"}),
                     "orvelcs: catalog: search: no such command; the nearest is search");
}

TEST_F(CommandLineUsage, EmptyValueOfAnOption_IsWrongUsage)
{
    expectWrongUsage(run({"new", "--drawing-version", "", "a.qedb"}), "orvelcs: new: --drawing-version: is empty");
    expectWrongUsage(run({"catalog", "search", "--limit", "", "UTM"}), "orvelcs: catalog search: --limit: is empty");
    expectWrongUsage(run({"catalog", "search", "UTM", "--kind", ""}), "orvelcs: catalog search: --kind: is empty");
    expectWrongUsage(run({"catalog", "search", "--authority", "", "UTM"}),
                     "orvelcs: catalog search: --authority: is empty");
    expectWrongUsage(run({"assign", "--definition", "", "--code", "X:1", "a.qedb"}),
                     "orvelcs: assign: --definition: is empty");
    EXPECT_TRUE(files().empty());
}

TEST_F(CommandLineUsage, EqualsSignWithoutAValue_DoesNotUseTheNextArgument)
{
    expectWrongUsage(run({"new", "--drawing-version=", "c.qedb"}), "orvelcs: new: --drawing-version: needs a value");
    expectWrongUsage(run({"assign", "--definition=", "--code", "X:1", "f"}),
                     "orvelcs: assign: --definition: needs a value");
    EXPECT_TRUE(files().empty());
}

TEST_F(CommandLineUsage, EqualsSign_JoinsAnOptionAndItsValue)
{
    EXPECT_EQ(run({"new", "--drawing-version=25", "a.qedb"}).status, 0);
    EXPECT_EQ(runForJson({"forms", "a.qedb"})["drawingVersion"], 25);
}

TEST_F(CommandLineUsage, FlagWithAValue_IsWrongUsage)
{
    givenDrawing("a.qedb");
    expectWrongUsage(run({"show", "--json=maybe", "a.qedb"}), "orvelcs: show: --json: takes no value");
    expectWrongUsage(run({"--json=false", "show", "a.qedb"}), "orvelcs: command line: --json: takes no value");
    expectWrongUsage(run({"new", "--force=false", "a.qedb"}), "orvelcs: new: --force: takes no value");
    expectWrongUsage(run({"catalog", "show", "--wkt=", "EPSG:4326"}), "orvelcs: catalog show: --wkt: takes no value");
}

TEST_F(CommandLineUsage, ValueThatIsAlsoACommand_IsAValue)
{
    expectWrongUsage(run({"catalog", "search", "--authority", "search", "UTM", "--limit="}),
                     "orvelcs: catalog search: --limit: needs a value");
}

TEST_F(CommandLineUsage, EmptyFileName_IsWrongUsage)
{
    for (const std::string command : {"new", "clear", "show", "forms"})
        expectWrongUsage(run({command, ""}), "orvelcs: " + command + ": FILE: is empty");
    expectWrongUsage(run({"assign", "EPSG:4326", "a.qedb", ""}), "orvelcs: assign: FILE: is empty");
    expectWrongUsage(run({"forms", "", "--put", "geodata=x"}), "orvelcs: forms: FILE: is empty");
    EXPECT_TRUE(files().empty());
}

TEST_F(CommandLineUsage, EmptyRegistryOrUserFolder_IsWrongUsage)
{
    expectWrongUsage(run({"show", "a.qedb", "--registry", ""}), "orvelcs: show: --registry: is empty");
    expectWrongUsage(run({"show", "a.qedb", "--user-dir", ""}), "orvelcs: show: --user-dir: is empty");
}

TEST_F(CommandLineUsage, OverlongCommand_IsRefusedWithoutASuggestion)
{
    EXPECT_THAT(run({"transformation" + std::string(51, 'n')}).errors,
                testing::HasSubstr(": no such command; there are new, "));
}

TEST_F(CommandLineUsage, EmptyCodeOrText_IsWrongUsage)
{
    expectWrongUsage(run({"catalog", "search", ""}), "orvelcs: catalog search: TEXT: is empty");
    expectWrongUsage(run({"catalog", "show", ""}), "orvelcs: catalog show: SYSTEM: is empty");
}

TEST_F(CommandLineUsage, CommandOptionBeforeTheCommand_IsRefusedWithItsPlace)
{
    givenDrawing("a.qedb");
    expectWrongUsage(run({"--events", "assign", "EPSG:4326", "a.qedb"}),
                     "orvelcs: assign: --events: is an option of assign and goes after assign");
    expectWrongUsage(run({"catalog", "--wkt", "show", "EPSG:4326"}),
                     "orvelcs: catalog show: --wkt: is an option of catalog show and goes after catalog show");
}

} // namespace
} // namespace Tests
