// Ctrl-C and the system's request to end, in the middle of many drawings.
#include <algorithm>
#include <csignal>
#include <regex>

#include <sys/wait.h>

#include "cli/command_line_test.h"
#include "cli/posix/started_batch.h"

namespace Tests {
namespace {

constexpr std::size_t kDrawings = 500;

class InterruptedBatch : public CommandLineTest {
protected:
    InterruptedBatch()
    {
        std::filesystem::create_directory(path(folder_));
        for (std::size_t index = 0; index < kDrawings; ++index) {
            names_.push_back(folder_ + "/" + std::to_string(index) + ".qedb");
            givenDrawing(names_.back());
        }
    }

    StartedBatch startBatch(const Arguments& options = {}) const
    {
        return {concatenate(concatenate({"assign", "EPSG:25832"}, options), names_), path(""), path("errors")};
    }
    /// The number of drawings that were done, as the program reports it.
    std::size_t reportedCount() const
    {
        static const std::regex report("orvelcs: assign: interrupted: after ([0-9]+) of 500 drawings(, [0-9]+ of which "
                                       "failed)?; ([0-9]+) not opened\n");
        std::smatch match;
        const std::string errors = contents("errors");
        if (!std::regex_match(errors, match, report))
            throw std::runtime_error("no report: " + errors);
        EXPECT_EQ(std::stoul(match[1]) + std::stoul(match[3]), kDrawings);
        return std::stoul(match[1]);
    }
    /// Whether the drawing has the system that the batch assigns.
    bool isAssigned(std::size_t index) const { return run({"show", names_[index]}).status == 0; }

    /// Expects that the drawings before `count` are assigned and the others are whole and as they were. Looks at those
    /// on both sides of the place of the interruption, and at the last.
    void expectAssigned(std::size_t count) const
    {
        ASSERT_GT(count, 0U);
        ASSERT_LT(count, kDrawings);
        EXPECT_TRUE(isAssigned(0));
        EXPECT_TRUE(isAssigned(count - 1));
        EXPECT_FALSE(isAssigned(count));
        EXPECT_FALSE(isAssigned(kDrawings - 1));
        EXPECT_EQ(run({"check", names_[count - 1]}).status, 0);
    }

    // The lines of a few dozen drawings fill the pipe.
    const std::string folder_ = std::string(60, 'x');
    Arguments names_;
};

class InterruptedBySignal : public InterruptedBatch, public testing::WithParamInterface<int> {};

TEST_P(InterruptedBySignal, Batch_FinishesTheDrawingInHandAndReportsWhatWasDone)
{
    StartedBatch batch = startBatch();
    EXPECT_EQ(batch.readLine(), names_[0] + ": assigned EPSG:25832");
    batch.send(GetParam());
    const int status = batch.finish();
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 130);
    const std::size_t count = reportedCount();
    const std::string& lines = batch.output();
    EXPECT_EQ(static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n')), count);
    expectAssigned(count);
}

TEST_P(InterruptedBySignal, BatchInJson_ClosesTheArray)
{
    StartedBatch batch = startBatch({"--json"});
    EXPECT_EQ(batch.readLine(), "[");
    batch.send(GetParam());
    const int status = batch.finish();
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 130);
    const Json json = Json::parse(batch.output());
    EXPECT_EQ(json.size(), reportedCount());
    EXPECT_EQ(json.back()["result"], 0);
    expectAssigned(json.size());
}

INSTANTIATE_TEST_SUITE_P(Each, InterruptedBySignal, testing::Values(SIGINT, SIGTERM),
                         [](const auto& signal) { return signal.param == SIGINT ? "Interrupt" : "Terminate"; });

TEST_F(InterruptedBatch, FailedDrawings_AreCounted)
{
    given(names_[0], "no drawing");
    StartedBatch batch = startBatch();
    EXPECT_EQ(batch.readLine(), names_[1] + ": assigned EPSG:25832");
    batch.send(SIGINT);
    EXPECT_EQ(WEXITSTATUS(batch.finish()), 130);
    EXPECT_THAT(contents("errors"), testing::HasSubstr(" of 500 drawings, 1 of which failed; "));
}

// The drawing in hand is not finished as long as nobody reads what was printed of it.
TEST_F(InterruptedBatch, SecondInterruption_EndsTheProgramAtOnce)
{
    StartedBatch batch = startBatch();
    batch.waitUntilFull(batch.readLine().size() + 1);
    const int status = batch.sendUntilEnd(SIGINT);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGINT);
}

} // namespace
} // namespace Tests
