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

ProgramResult CommandLineTest::run(std::vector<std::string> arguments, const std::string& input) const
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

ProgramResult CommandLineTest::runBeside(const std::vector<std::string>& arguments, int number) const
{
    const std::filesystem::path captures = captures_ / std::to_string(number);
    std::filesystem::create_directory(captures);
    ProgramRun programRun;
    programRun.arguments = arguments;
    return runProgram(programRun, folder_, captures);
}

ProgramResult CommandLineTest::runWithoutCatalog(std::vector<std::string> arguments) const
{
    ProgramRun programRun;
    programRun.arguments = std::move(arguments);
    return run(withoutCatalog(std::move(programRun), captures_));
}

Json CommandLineTest::runForJson(std::vector<std::string> arguments, int expectedStatus) const
{
    arguments.push_back("--json");
    const ProgramResult result = run(std::move(arguments));
    EXPECT_EQ(result.status, expectedStatus) << result.errors;
    EXPECT_TRUE(result.output.ends_with("\n"));
    Json document = Json::parse(result.output, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << result.output;
    return document;
}

void CommandLineTest::givenDrawing(const std::string& name, int version) const
{
    givenOnceMade(name, {{"new", "--quiet", "--drawing-version", std::to_string(version)}});
}

void CommandLineTest::givenDrawingWith(const std::string& name, const std::string& code) const
{
    givenOnceMade(name, {{"new", "--quiet"}, {"assign", "--quiet", code}});
}

void CommandLineTest::givenOnceMade(const std::string& name, const CommandLines& commands) const
{
    static std::map<CommandLines, std::string> made;
    const auto known = made.find(commands);
    if (known != made.end())
        return given(name, known->second);
    for (std::vector<std::string> arguments : commands) {
        arguments.push_back(name);
        const ProgramResult result = run(std::move(arguments));
        ASSERT_EQ(result.status, 0) << result.errors;
    }
    made.emplace(commands, contents(name));
}

std::vector<std::string> CommandLineTest::files() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
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

void expectResult(const ProgramResult& result, int status, const std::string& output, const std::string& errors)
{
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.errors, errors);
}

void expectWrongUsage(const ProgramResult& result, const std::string& line)
{
    expectResult(result, 2, "", line + "\n");
}

} // namespace Tests
