// Help, the table of commands, and colour where the output is no terminal.
#include <algorithm>
#include <iterator>
#include <sstream>

#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;

class Help : public CommandLineTest {
protected:
    ProgramResult runWith(const std::string& variable, const std::string& value, const Arguments& arguments) const
    {
        ProgramRun programRun;
        programRun.arguments = arguments;
        programRun.environment[variable] = value;
        return run(programRun);
    }

    std::vector<Arguments> commands() const
    {
        std::vector<Arguments> all;
        for (const Json& command : runForJson({"commands"})) {
            std::istringstream words(command["name"].get<std::string>());
            all.emplace_back(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>());
        }
        return all;
    }
};

std::size_t countCharacters(const std::string& utf8)
{
    return static_cast<std::size_t>(
        std::ranges::count_if(utf8, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

/// The lines that are longer although they could be broken. An example is one line, to be copied.
std::vector<std::string> linesBeyond(const std::string& text, std::size_t columns)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        const std::size_t start = std::min(line.find_first_not_of(' '), line.size());
        const bool isExample = line.starts_with("      ") && line.find("orvelcs ") != std::string::npos;
        const bool isLiteral = line.starts_with("  ") && start == 2;
        if (countCharacters(line) > columns && !isExample && !isLiteral && line.find(' ', start) != std::string::npos)
            lines.push_back(line);
    }
    return lines;
}

TEST_F(Help, Help_IsTheSameAsTheOption)
{
    EXPECT_EQ(run({"help"}).output, run({"--help"}).output);
    for (const Arguments& command : commands())
        EXPECT_EQ(run(concatenate({"help"}, command)).output, run(concatenate(command, {"--help"})).output);
}

TEST_F(Help, MisspeltCommandOfHelp_IsRefusedWithTheNearest)
{
    expectWrongUsage(run({"help", "asign"}), "orvelcs: help: asign: no such command or topic; the nearest is assign");
    expectWrongUsage(run({"help", "catalog", "serch"}),
                     "orvelcs: help: serch: no such command or topic; the nearest is search");
    expectWrongUsage(run({"help", "exitstatus"}),
                     "orvelcs: help: exitstatus: no such command or topic; the nearest is exit-status");
}

TEST_F(Help, Topics_AreNamedByTheHelp_AndPrinted)
{
    const std::string help = run({"help"}).output;
    for (const std::string topic : {"output", "options", "json", "systems", "batches", "environment", "exit-status"}) {
        EXPECT_THAT(help, HasSubstr(topic));
        const ProgramResult result = run({"help", topic});
        EXPECT_EQ(result.status, 0);
        EXPECT_GT(result.output.size(), 300U) << topic;
    }
}

TEST_F(Help, Lines_FitTheWidthThatTheEnvironmentGives)
{
    for (const Arguments& command : commands()) {
        const std::string narrow = runWith("COLUMNS", "60", concatenate({"help"}, command)).output;
        EXPECT_EQ(linesBeyond(narrow, 60), std::vector<std::string>{});
    }
    const Arguments help{"help", "systems"};
    EXPECT_EQ(linesBeyond(run(help).output, 80), std::vector<std::string>{});
    EXPECT_NE(linesBeyond(run(help).output, 60), std::vector<std::string>{});
    EXPECT_NE(linesBeyond(runWith("COLUMNS", "120", help).output, 80), std::vector<std::string>{});
    for (const std::string value : {"0", "", "wide", "-5"})
        EXPECT_EQ(runWith("COLUMNS", value, help).output, run(help).output) << value;
}

TEST_F(Help, TableInAPipe_IsNeverCut)
{
    const Arguments search{"catalog", "search", "EPSG:25832"};
    EXPECT_EQ(runWith("COLUMNS", "40", search).output, run(search).output);
    EXPECT_THAT(run(search).output, testing::Not(HasSubstr("…")));
}

TEST_F(Help, ColorAlways_FormatsAPipeToo)
{
    givenDrawing("a.qedb");
    EXPECT_THAT(run({"forms", "a.qedb"}).output, testing::StartsWith("a.qedb"));
    EXPECT_THAT(run({"forms", "a.qedb", "--color", "auto"}).output, testing::StartsWith("a.qedb"));
    EXPECT_THAT(run({"forms", "a.qedb", "--color=always"}).output, testing::StartsWith("\x1B[1ma.qedb"));
    EXPECT_THAT(runWith("NO_COLOR", "1", {"--color", "always", "forms", "a.qedb"}).output,
                testing::StartsWith("\x1B[1m"));
}

TEST_F(Help, LastColorOption_Counts)
{
    givenDrawing("a.qedb");
    const auto output = [&](const Arguments& options) { return run(concatenate({"forms", "a.qedb"}, options)).output; };
    EXPECT_THAT(output({"--color", "always", "--no-color"}), testing::StartsWith("a.qedb"));
    EXPECT_THAT(output({"--no-color", "--color", "always"}), testing::StartsWith("\x1B[1m"));
    EXPECT_THAT(output({"--color", "never", "--color", "always"}), testing::StartsWith("\x1B[1m"));
    EXPECT_THAT(output({"--color", "always", "--no-color", "--color", "auto"}), testing::StartsWith("a.qedb"));
}

TEST_F(Help, UnknownColorWord_IsWrongUsage)
{
    expectWrongUsage(run({"show", "a.qedb", "--color", "red"}),
                     "orvelcs: show: --color: expected auto, always or never, found red");
}

TEST_F(Help, CommandsAsJson_DescribeArgumentsOptionsAndExitStatuses)
{
    for (const Json& command : runForJson({"commands"})) {
        const auto name = command["name"].get<std::string>();
        ASSERT_FALSE(command["usage"].empty()) << name;
        for (const Json& usage : command["usage"])
            EXPECT_THAT(usage.get<std::string>(), testing::StartsWith("orvelcs " + name));
        EXPECT_NE(command["description"], "") << name;
        EXPECT_GE(command["exitStatuses"].size(), 4U);
        EXPECT_EQ(command["options"].back()["names"], (Json{"-h", "--help"}));
        for (const Json& option : command["options"]) {
            EXPECT_FALSE(option["names"].empty()) << name;
            EXPECT_NE(option["description"], "") << name << option["names"];
            EXPECT_EQ(option["type"] == "flag", option["value"].is_null()) << name << option["names"];
        }
    }
}

TEST_F(Help, OldNames_StillWorkAndAreShownNowhere)
{
    givenDrawing("a.qedb");
    EXPECT_EQ(run({"convert", "a.qedb", "--to", "29", "--quiet"}).status, 0);
    given("zone.txt", "+proj=utm +zone=32 +type=crs");
    EXPECT_EQ(run({"assign", "--definition", "zone.txt", "--code", "OWN:1", "a.qedb"}).status, 0);
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "OWN:1");
    for (const Arguments& arguments : {Arguments{"commands", "--json"}, Arguments{"commands", "--man"},
                                       Arguments{"help", "convert"}, Arguments{"help", "assign"}}) {
        const std::string text = run(arguments).output;
        EXPECT_THAT(text, testing::Not(HasSubstr("--to")));
        EXPECT_THAT(text, testing::Not(HasSubstr("--definition")));
    }
    expectWrongUsage(run({"convert", "a.qedb", "--too", "29"}), "orvelcs: convert: --too: no such option");
}

TEST_F(Help, FormsOfTheTable_ExcludeEachOther)
{
    expectWrongUsage(run({"commands", "--man", "--markdown"}),
                     "orvelcs: commands: --man: is one form of the table and another is asked for, too");
}

} // namespace
} // namespace Tests
