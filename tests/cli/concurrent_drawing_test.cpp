// Several processes use one drawing at once.
#include <algorithm>
#include <chrono>

#include <sqlite3.h>

#include "concurrent_commands.h"

namespace Tests {
namespace {

using testing::HasSubstr;

class ConcurrentDrawing : public ConcurrentCommands {
protected:
    const Arguments kStore = {"--drawing", "a.qedb"};
};

TEST_F(ConcurrentDrawing, TwoDifferentChanges_AreBothSaved)
{
    for (int round = 0; round < rounds(3) && !HasFailure(); ++round) {
        std::filesystem::remove(path("a.qedb"));
        givenDrawing("a.qedb");
        for (const ProgramResult& result :
             runAtOnce({{"assign", "-q", "--wait", "120", "EPSG:25832", "a.qedb"}, addition("S", kStore)}))
            expectResult(result, 0, "", "");
        EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:25832") << "round " << round;
        EXPECT_EQ(storedSources(kStore), std::set<std::string>{"S"}) << "round " << round;
    }
}

TEST_F(ConcurrentDrawing, EightAdditions_AreAllStored)
{
    givenDrawing("a.qedb");
    expectAdditionsStored(kStore);
}

/// Each process runs several commands, one after the other, and adds items of its own.
class MixedCommands : public ConcurrentDrawing {
protected:
    /// Returns the sources of the added items.
    std::set<std::string> runCommands(int process, int commands) const
    {
        std::set<std::string> added;
        const std::vector<Arguments> others = {{"assign", "-q", "--wait", "120", "EPSG:25832", "a.qedb"},
                                               {"convert", "-q", "--wait", "120", "a.qedb", "--to", "29"},
                                               {"show", "--wait", "120", "a.qedb"},
                                               {"convert", "-q", "--wait", "120", "a.qedb", "--to", "33"},
                                               {"clear", "-q", "--wait", "120", "a.qedb"},
                                               {"forms", "--wait", "120", "a.qedb"}};
        for (int number = 0; number < commands; ++number) {
            if (number % 2 == 1) {
                const auto index = static_cast<std::size_t>(process + number) % others.size();
                const ProgramResult result = runInParallel(others[index], process);
                EXPECT_TRUE(result.status == 0 || (index == 2 && result.status == 3)) << result.errors;
                continue;
            }
            const std::string source = "S" + std::to_string(process) + "-" + std::to_string(number);
            const ProgramResult result = runInParallel(addition(source, kStore), process);
            EXPECT_EQ(result.status, 0) << result.errors;
            added.insert(source);
        }
        return added;
    }
};

TEST_F(MixedCommands, EightProcesses_LoseNoReportedAddition)
{
    givenDrawing("a.qedb");
    const int commands = rounds(4);
    std::vector<std::future<std::set<std::string>>> processes;
    for (int process = 0; process < 8; ++process)
        processes.push_back(std::async(std::launch::async, [=, this] { return runCommands(process, commands); }));
    std::set<std::string> added;
    for (auto& process : processes)
        added.merge(process.get());
    EXPECT_EQ(storedSources(kStore), added);
}

TEST_F(ConcurrentDrawing, FileCreatedByThreeProcesses_IsCreatedOnce)
{
    for (int round = 0; round < rounds(4) && !HasFailure(); ++round) {
        std::filesystem::remove(path("a.qedb"));
        const Arguments create = {"new", "-q", "--wait", "120", "a.qedb"};
        std::vector<std::string> errors;
        for (const ProgramResult& result : runAtOnce({create, create, create}))
            errors.push_back(result.errors);
        std::ranges::sort(errors);
        const std::string exists = "orvelcs: new: a.qedb: exists; --force overwrites it\n";
        EXPECT_EQ(errors, (std::vector<std::string>{"", exists, exists}));
        EXPECT_EQ(runForJson({"show", "a.qedb"}, 3)["drawingVersion"], 33);
    }
}

/// Another program is changing the drawing.
class LockedDrawing : public CommandLineTest {
protected:
    LockedDrawing()
    {
        givenDrawingWith("a.qedb", "EPSG:25832");
        sqlite3_open(path("a.qedb").string().c_str(), &connection_);
        execute("BEGIN IMMEDIATE");
    }
    ~LockedDrawing() override { sqlite3_close(connection_); }

    void execute(const char* sql) { EXPECT_EQ(sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr), SQLITE_OK); }

private:
    sqlite3* connection_ = nullptr;
};

TEST_F(LockedDrawing, ChangingCommands_FailAndChangeNothing)
{
    const std::vector<Arguments> changes = {
        {"assign", "EPSG:4326", "a.qedb"},          {"clear", "a.qedb"},
        {"convert", "a.qedb", "--to", "29"},        {"forms", "a.qedb", "--put", "config=x"},
        {"config", "clear", "--drawing", "a.qedb"}, {"new", "--force", "a.qedb"}};
    for (const Arguments& change : changes) {
        const ProgramResult result = run(concatenate(change, {"--wait", "0"}));
        EXPECT_EQ(result.status, 1) << change[0];
        EXPECT_THAT(result.errors, HasSubstr("a.qedb: eFileLocked (55): another process holds it, after 0 s still; try "
                                             "again, or wait longer with --wait SECONDS\n"));
    }
    execute("ROLLBACK");
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:25832");
}

TEST_F(LockedDrawing, ReadingCommands_SucceedUntilTheOtherProgramCommits)
{
    EXPECT_EQ(runForJson({"show", "--wait", "0", "a.qedb"})["code"], "EPSG:25832");
    EXPECT_EQ(run({"convert", "--wait", "0", "a.qedb", "--to", "29", "-o", "b.qedb"}).status, 0);
    execute("COMMIT");
    execute("BEGIN EXCLUSIVE"); // a commit does the same while it writes
    const ProgramResult result = run({"show", "--wait", "0", "a.qedb"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("eFileLocked (55)"));
}

TEST_F(LockedDrawing, WaitOption_SetsTheTimeToWait)
{
    const auto start = std::chrono::steady_clock::now();
    const ProgramResult result = run({"clear", "--wait", "0.2", "a.qedb"});
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
    EXPECT_THAT(result.errors, HasSubstr("after 0.2 s still"));
    std::future<ProgramResult> pending = std::async(std::launch::async, [&] {
        return runInParallel({"clear", "-q", "--wait", "60", "a.qedb"}, 1);
    });
    execute("ROLLBACK");
    EXPECT_EQ(pending.get().status, 0);
}

TEST_F(ConcurrentDrawing, DrawingNamedTwice_DoesNotWaitForItself)
{
    givenDrawing("a.qedb");
    expectResult(run({"assign", "-q", "--wait", "0", "EPSG:25832", "a.qedb", "./a.qedb", path("a.qedb").string()}), 0,
                 "", "");
    EXPECT_EQ(runForJson({"show", "a.qedb"})["code"], "EPSG:25832");
}

} // namespace
} // namespace Tests
