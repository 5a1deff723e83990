#include "command_line_test.h"

#include <algorithm>
#include <map>

#include <sqlite3.h>

namespace Tests {

CommandLineTest::CommandLineTest()
{
    std::filesystem::create_directory(folder_);
    std::filesystem::create_directory(captures_);
}

ProgramResult CommandLineTest::run(Arguments arguments, const std::string& input) const
{
    ProgramRun programRun;
    programRun.arguments = std::move(arguments);
    programRun.input = input;
    return run(programRun);
}

ProgramResult CommandLineTest::run(const ProgramRun& programRun) const
{
    return runProgram(programRun, folder_, captures_);
}

ProgramResult CommandLineTest::runInParallel(const Arguments& arguments, int number) const
{
    const std::filesystem::path captures = captures_ / std::to_string(number);
    std::filesystem::create_directory(captures);
    ProgramRun programRun;
    programRun.arguments = arguments;
    return runProgram(programRun, folder_, captures);
}

ProgramResult CommandLineTest::runWithoutCatalog(Arguments arguments) const
{
    ProgramRun programRun;
    programRun.arguments = std::move(arguments);
    return run(withoutCatalog(std::move(programRun), captures_));
}

Json CommandLineTest::runForJson(Arguments arguments, int expectedStatus) const
{
    arguments.push_back("--json");
    const ProgramResult result = run(std::move(arguments));
    EXPECT_EQ(result.status, expectedStatus) << result.errors;
    EXPECT_TRUE(result.output.ends_with("\n"));
    Json document = Json::parse(result.output, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << result.output;
    return document;
}

void CommandLineTest::expectPrinted(const ProgramResult& result, const std::string& name) const
{
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(drawingFromBytes(result.output), drawing(name));
}

void CommandLineTest::givenDrawing(const std::string& name, int version) const
{
    givenDrawingMadeBy({{"new", "--quiet", "--drawing-version", std::to_string(version)}}, name);
}

void CommandLineTest::givenDrawingWith(const std::string& name, const std::string& code) const
{
    givenDrawingMadeBy({{"new", "--quiet"}, {"assign", "--quiet", code}}, name);
}

void CommandLineTest::givenConfiguredDrawing(const std::string& name, const std::string& configuration) const
{
    givenDrawing(name);
    ASSERT_EQ(run({"forms", name, "--quiet", "--put", "config=" + configuration}).status, 0);
}

void CommandLineTest::givenDrawingMadeBy(const CommandLines& commands, const std::string& name) const
{
    static std::map<CommandLines, std::string> drawings;
    const auto known = drawings.find(commands);
    if (known != drawings.end())
        return given(name, known->second);
    for (const Arguments& arguments : commands) {
        const ProgramResult result = run(concatenate(arguments, {name}));
        ASSERT_EQ(result.status, 0) << result.errors;
    }
    drawings.emplace(commands, contents(name));
}

std::vector<std::string> CommandLineTest::files(const std::string& folder) const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path(folder)))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

void CommandLineTest::edit(const std::string& name, const std::string& sql) const
{
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path(name).string().c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
    sqlite3_close(database);
}

Arguments concatenate(Arguments arguments, const Arguments& more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

Json event(const std::string& name, const Json& code)
{
    return {{"event", name}, {"name", code}};
}

std::string configurationItem(const std::string& source, const std::string& target, const std::string& name, int type,
                              const std::string& note)
{
    return "<Item><Version>1.0</Version><SourceCs>" + source + "</SourceCs><TargetCs>" + target + "</TargetCs><Name>" +
           name + "</Name><Type>" + std::to_string(type) + "</Type><Note>" + note + "</Note></Item>";
}

void expectResult(const ProgramResult& result, int status, const std::string& output,
                  const testing::Matcher<const std::string&>& errors)
{
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.output, output);
    EXPECT_THAT(result.errors, errors);
}

void expectWrongUsage(const ProgramResult& result, const std::string& line)
{
    expectResult(result, 2, "", line + "\n");
}

void expectWrongUsageAsJson(const ProgramResult& result, const std::string& line)
{
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, line + "\n");
    const Json document = Json::parse(result.output, nullptr, false);
    ASSERT_TRUE(document.is_object() && document.contains("error")) << result.output;
    EXPECT_EQ(document.size(), 1U);
    EXPECT_EQ(document["error"].size(), 5U);
    EXPECT_EQ(document["error"]["code"], nullptr);
    EXPECT_EQ(errorLine(document["error"]), line + "\n");
}

Json errorMember(const std::string& command, const std::string& what, const Json& code, const Json& name,
                 const std::string& message)
{
    return {{"command", command}, {"what", what}, {"code", code}, {"name", name}, {"message", message}};
}

std::string errorLine(const Json& error)
{
    return "orvelcs: " + error["command"].get<std::string>() + ": " + error["what"].get<std::string>() + ": " +
           error["message"].get<std::string>() + "\n";
}

} // namespace Tests
