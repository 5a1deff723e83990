// Several processes that use one drawing at once.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <set>

#include <sqlite3.h>

#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using CommandLine = std::vector<std::string>;

/// ORVEL_ROUNDS in the environment asks for more than there are in an ordinary run.
int roundsOr(int ordinary)
{
    const char* const wanted = std::getenv("ORVEL_ROUNDS");
    return wanted != nullptr ? std::atoi(wanted) : ordinary;
}

class ConcurrentDrawing : public CommandLineTest {
protected:
    static CommandLine addition(const std::string& source)
    {
        return {"config",         "add",       "--source", source, "--target", "T",  "--name", "EPSG:1241", "--type",
                "transformation", "--drawing", "a.qedb",   "-q",   "--wait",   "120"};
    }

    /// Runs all of them at once, and answers how each ended.
    std::vector<ProgramResult> runAtOnce(const std::vector<CommandLine>& commands) const
    {
        std::vector<std::future<ProgramResult>> processes;
        for (std::size_t index = 0; index < commands.size(); ++index)
            processes.push_back(std::async(std::launch::async, [this, &commands, index] {
                return runBeside(commands[index], static_cast<int>(index));
            }));
        std::vector<ProgramResult> results;
        for (auto& process : processes)
            results.push_back(process.get());
        return results;
    }

    std::set<std::string> storedSources() const
    {
        const ProgramResult stored = run({"config", "get", "--drawing", "a.qedb"});
        std::set<std::string> sources;
        for (const Json& item : Json::parse(run({"config", "items", "--json"}, stored.output).output))
            sources.insert(item["sourceCs"]);
        return sources;
    }
};

TEST_F(ConcurrentDrawing, TwoDifferentChanges_AreBothThere)
{
    for (int round = 0; round < roundsOr(3) && !HasFailure(); ++round) {
        std::filesystem::remove(path("a.qedb"));
        givenDrawing("a.qedb");
        for (const ProgramResult& result :
             runAtOnce({{"assign", "-q", "--wait", "120", "EPSG:25832", "a.qedb"}, addition("S")}))
            expectResult(result, 0, "", "");
        EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:25832") << "round " << round;
        EXPECT_EQ(storedSources(), std::set<std::string>{"S"}) << "round " << round;
    }
}

TEST_F(ConcurrentDrawing, EveryItemThatWasAddedIsThere)
{
    givenDrawing("a.qedb");
    std::vector<CommandLine> additions;
    std::set<std::string> expected;
    for (int number = 0; number < 8; ++number) {
        additions.push_back(addition("S" + std::to_string(number)));
        expected.insert("S" + std::to_string(number));
    }
    for (const ProgramResult& result : runAtOnce(additions))
        expectResult(result, 0, "", "");
    EXPECT_EQ(storedSources(), expected);
}

/// What eight processes do, one command after the other; each adds items of its own.
class MixedCommands : public ConcurrentDrawing {
protected:
    void work(int process, int commands, std::set<std::string>& added) const
    {
        const std::vector<CommandLine> others = {{"assign", "-q", "--wait", "120", "EPSG:25832", "a.qedb"},
                                                 {"convert", "-q", "--wait", "120", "a.qedb", "--to", "29"},
                                                 {"show", "--wait", "120", "a.qedb"},
                                                 {"convert", "-q", "--wait", "120", "a.qedb", "--to", "33"},
                                                 {"clear", "-q", "--wait", "120", "a.qedb"},
                                                 {"forms", "--wait", "120", "a.qedb"}};
        for (int number = 0; number < commands; ++number) {
            if (number % 2 == 1) {
                const auto index = static_cast<std::size_t>(process + number) % others.size();
                const ProgramResult result = runBeside(others[index], process);
                EXPECT_TRUE(result.status == 0 || (index == 2 && result.status == 3)) << result.errors;
                continue;
            }
            const std::string source = "S" + std::to_string(process) + "-" + std::to_string(number);
            const ProgramResult result = runBeside(addition(source), process);
            EXPECT_EQ(result.status, 0) << result.errors;
            added.insert(source);
        }
    }
};

TEST_F(MixedCommands, OfEightProcesses_LoseNothingThatWasReportedAsDone)
{
    constexpr int kWorkers = 8;
    givenDrawing("a.qedb");
    const int commands = roundsOr(4);
    std::array<std::set<std::string>, kWorkers> added;
    std::vector<std::future<void>> processes;
    for (int process = 0; process < kWorkers; ++process)
        processes.push_back(std::async(
            std::launch::async, [&, process] { work(process, commands, added[static_cast<std::size_t>(process)]); }));
    for (auto& process : processes)
        process.get();
    std::set<std::string> all;
    for (const std::set<std::string>& each : added)
        all.insert(each.begin(), each.end());
    EXPECT_EQ(storedSources(), all);
}

TEST_F(ConcurrentDrawing, OfTwoThatMakeOneFile_OneWins)
{
    for (int round = 0; round < roundsOr(4) && !HasFailure(); ++round) {
        std::filesystem::remove(path("a.qedb"));
        const CommandLine make = {"new", "-q", "--wait", "120", "a.qedb"};
        std::vector<std::string> errors;
        for (const ProgramResult& result : runAtOnce({make, make, make}))
            errors.push_back(result.errors);
        std::ranges::sort(errors);
        const std::string exists = "orvelcs: new: a.qedb: exists; --force overwrites it\n";
        EXPECT_EQ(errors, (std::vector<std::string>{"", exists, exists}));
        EXPECT_EQ(runForJson({"show", "a.qedb"}, 3)["drawingVersion"], 33);
    }
}

/// A drawing that another program is changing.
class LockedDrawing : public CommandLineTest {
protected:
    LockedDrawing()
    {
        givenDrawingWith("a.qedb", "EPSG:25832");
        sqlite3_open(path("a.qedb").string().c_str(), &other_);
        lock("BEGIN IMMEDIATE");
    }
    ~LockedDrawing() override { sqlite3_close(other_); }

    void lock(const char* sql) { EXPECT_EQ(sqlite3_exec(other_, sql, nullptr, nullptr, nullptr), SQLITE_OK); }

private:
    sqlite3* other_ = nullptr;
};

TEST_F(LockedDrawing, IsNotChanged)
{
    const std::vector<CommandLine> changes = {
        {"assign", "EPSG:4326", "a.qedb"},          {"clear", "a.qedb"},
        {"convert", "a.qedb", "--to", "29"},        {"forms", "a.qedb", "--put", "config=x"},
        {"config", "clear", "--drawing", "a.qedb"}, {"new", "--force", "a.qedb"}};
    for (CommandLine change : changes) {
        change.insert(change.end(), {"--wait", "0"});
        const ProgramResult result = run(change);
        EXPECT_EQ(result.status, 1) << change[0];
        EXPECT_THAT(result.errors, HasSubstr("a.qedb: eFileLocked (55): another process holds it, after 0 s still; try "
                                             "again, or wait longer with --wait SECONDS\n"));
    }
    lock("ROLLBACK");
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:25832");
}

TEST_F(LockedDrawing, IsReadUntilTheOtherCommits)
{
    EXPECT_EQ(runForJson({"show", "--wait", "0", "a.qedb"})["code"], "EPSG:25832");
    EXPECT_EQ(run({"convert", "--wait", "0", "a.qedb", "--to", "29", "-o", "b.qedb"}).status, 0);
    lock("COMMIT");
    lock("BEGIN EXCLUSIVE"); // as a commit does while it writes
    const ProgramResult result = run({"show", "--wait", "0", "a.qedb"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("eFileLocked (55)"));
}

TEST_F(LockedDrawing, IsWaitedForAsLongAsAsked)
{
    const auto began = std::chrono::steady_clock::now();
    const ProgramResult result = run({"clear", "--wait", "0.2", "a.qedb"});
    EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(200));
    EXPECT_THAT(result.errors, HasSubstr("after 0.2 s still"));
    std::future<ProgramResult> waiting = std::async(std::launch::async, [&] {
        return runBeside({"clear", "-q", "--wait", "60", "a.qedb"}, 1);
    });
    lock("ROLLBACK");
    EXPECT_EQ(waiting.get().status, 0);
}

TEST_F(ConcurrentDrawing, FileThatIsNamedTwice_DoesNotWaitForItself)
{
    givenDrawing("a.qedb");
    expectResult(run({"assign", "-q", "--wait", "0", "EPSG:25832", "a.qedb", "./a.qedb", path("a.qedb").string()}), 0,
                 "", "");
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:25832");
}

} // namespace
} // namespace Tests
