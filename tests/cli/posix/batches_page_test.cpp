// The examples of docs/batches.md, as they stand there.
#include <sstream>

#include "cli/command_line_test.h"
#include "cli/posix/page_shell.h"
#include "project/command_blocks.h"

namespace Tests {
namespace {

constexpr std::size_t kFew = 20;
#if ORVEL_CATALOG_STRIDE > 1 // slow builds
constexpr std::size_t kJobs = kFew;
#else
constexpr std::size_t kJobs = 200;
#endif
constexpr const char* kFailing = "drawings/7.qedb";

class BatchesPage : public CommandLineTest {
protected:
    /// Creates the drawings of the page, and a list of them.
    void givenDrawings(std::size_t count) const
    {
        std::filesystem::create_directory(path("drawings"));
        std::string list;
        for (std::size_t index = 0; index < count; ++index) {
            const std::string name = "drawings/" + std::to_string(index) + ".qedb";
            givenDrawing(name);
            list += name + "\n";
        }
        given("names", list);
    }

    static std::vector<std::string> examples(const std::string& heading)
    {
        return commandsBelow("docs/batches.md", heading);
    }

    ProgramResult runExample(const std::string& script, const std::string& task = "") const
    {
        ProgramRun shell = pageShell(script, path(""));
        shell.environment["SLURM_ARRAY_TASK_ID"] = task;
        return run(shell);
    }
    bool isInstalled(const std::string& program) const { return runExample("command -v " + program).status == 0; }

    /// The lines of GNU parallel's log, one for each job, without the heading.
    std::vector<std::string> loggedJobs() const
    {
        std::istringstream log(contents("jobs.log"));
        std::vector<std::string> jobs;
        std::string line;
        std::getline(log, line);
        while (std::getline(log, line))
            jobs.push_back(line);
        return jobs;
    }
    /// The number of drawings that have a coordinate system.
    std::size_t countAssigned() const
    {
        std::size_t count = 0;
        for (const Json& drawing :
             Json::parse(runExample("orvelcs --json show --files-from - <names").output, nullptr, false))
            count += static_cast<std::size_t>(drawing["code"] == "EPSG:25832");
        return count;
    }
};

TEST_F(BatchesPage, ListOfFind_IsAssigned)
{
    givenDrawings(kFew);
    const std::vector<std::string> scripts = examples("A list of names");
    ASSERT_EQ(scripts.size(), 1U);
    const ProgramResult result = runExample(scripts[0]);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(countAssigned(), kFew);
}

TEST_F(BatchesPage, GnuParallel_RunsEachDrawing_AndAgainTheOneThatFailed)
{
    if (!isInstalled("parallel"))
        GTEST_SKIP() << "GNU parallel is not installed (the package parallel)";
    givenDrawings(kJobs);
    const std::vector<std::string> scripts = examples("On one machine");
    ASSERT_EQ(scripts.size(), 2U);
    const std::string whole = contents(kFailing);
    given(kFailing, "no drawing");

    const ProgramResult first = runExample(scripts[0]);
    EXPECT_EQ(first.status, 1);
    EXPECT_THAT(first.errors, testing::HasSubstr("orvelcs: assign: drawings/7.qedb: eFileDamaged (51): "));
    EXPECT_EQ(loggedJobs().size(), kJobs);
    EXPECT_EQ(countAssigned(), kJobs - 1);

    given(kFailing, whole);
    const ProgramResult second = runExample(scripts[1]);
    EXPECT_EQ(second.status, 0) << second.errors;
    const std::vector<std::string> jobs = loggedJobs();
    ASSERT_EQ(jobs.size(), kJobs + 1); // the log holds the second run of the one job
    EXPECT_THAT(jobs.back(), testing::EndsWith("\torvelcs --quiet assign EPSG:25832 drawings/7.qedb"));
    EXPECT_EQ(countAssigned(), kJobs);
}

TEST_F(BatchesPage, TasksOfTheJobArray_TakeAllDrawings)
{
    givenDrawings(kFew);
    const std::vector<std::string> scripts = examples("In a Slurm job array");
    ASSERT_EQ(scripts.size(), 3U);
    given(kFailing, "no drawing");
    ASSERT_EQ(runExample(scripts[0]).status, 0);
    std::size_t results = 0;
    for (const std::string task : {"0", "1", "2", "3"}) {
        static_cast<void>(runExample(scripts[1], task));
        results += Json::parse(contents("results/" + task + ".json")).size();
    }
    EXPECT_EQ(results, kFew);
    EXPECT_EQ(countAssigned(), kFew - 1);
    if (!isInstalled("jq"))
        GTEST_SKIP() << "jq is not installed; the list of failed drawings was not made";
    ASSERT_EQ(runExample(scripts[2]).status, 0);
    EXPECT_EQ(contents("failed"), std::string(kFailing) + '\0');
}

} // namespace
} // namespace Tests
