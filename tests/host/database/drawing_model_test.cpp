#include "host/database/model_run.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

constexpr int kStepsOfARun = 50000;
constexpr int kStepsBetweenComparisons = 500;

class DrawingModelTest : public PlatformTest, public testing::WithParamInterface<std::uint64_t> {
protected:
    /// Every operation must have been made often. An operation that can fail must have failed often too.
    static void expectVariety(const ModelRun& run)
    {
        for (const auto& [operation, count] : run.counts()) {
            if (operation != "unerase undone") {
                EXPECT_GT(count.second, 40) << operation;
            }
        }
        for (const char* canFail : {"open", "upgrade", "erase", "unerase", "write", "add", "remove", "register",
                                    "rename", "post", "extended data", "commit", "abort", "unerase undone"}) {
            ASSERT_TRUE(run.counts().contains(canFail)) << canFail;
            const auto& [made, succeeded] = run.counts().at(canFail);
            EXPECT_GT(made - succeeded, 20) << canFail;
        }
    }
};

TEST_P(DrawingModelTest, RandomOperations_AgreeWithThePlainModel)
{
    const std::uint64_t seed = GetParam();
    SCOPED_TRACE("seed " + std::to_string(seed));
    const TemporaryFolder folder;
    ModelRun run(seed, folder.path() / "a.qedb");
    for (int step = 1; step <= kStepsOfARun; ++step) {
        const bool agrees = run.step() && (step % kStepsBetweenComparisons != 0 || run.compare());
        ASSERT_TRUE(agrees) << "at step " << step;
    }
    expectVariety(run);
}

INSTANTIATE_TEST_SUITE_P(Seeds, DrawingModelTest, testing::Values(1, 2, 3, 4));

} // namespace
} // namespace Tests
