#include "host/database/model_run.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

constexpr int kStepsOfAPart = 50000;
constexpr int kStepsBetweenComparisons = 500;

class DrawingModelTest : public PlatformTest, public testing::WithParamInterface<std::uint64_t> {
protected:
    /// Every kind of operation must have been made often and, where it can be refused, also have been refused.
    static void expectVariety(const ModelRun& run)
    {
        for (const auto& [operation, count] : run.tally()) {
            if (operation != "revive") {
                EXPECT_GT(count.second, 40) << operation;
            }
        }
        for (const char* refusable : {"open", "upgrade", "erase", "unerase", "write", "add", "remove", "register",
                                      "rename", "post", "extended data", "commit", "abort", "revive"}) {
            ASSERT_TRUE(run.tally().contains(refusable)) << refusable;
            const auto& [made, succeeded] = run.tally().at(refusable);
            EXPECT_GT(made - succeeded, 20) << refusable;
        }
    }
};

TEST_P(DrawingModelTest, RandomOperations_AgreeWithThePlainModel)
{
    const std::uint64_t seed = GetParam();
    SCOPED_TRACE("seed " + std::to_string(seed));
    const TemporaryFolder folder;
    ModelRun run(seed, folder.path() / "a.qedb");
    for (int step = 1; step <= kStepsOfAPart; ++step) {
        const bool same = run.step() && (step % kStepsBetweenComparisons != 0 || run.compare());
        ASSERT_TRUE(same) << "at step " << step;
    }
    expectVariety(run);
}

INSTANTIATE_TEST_SUITE_P(Seeds, DrawingModelTest, testing::Values(1, 2, 3, 4));

} // namespace
} // namespace Tests
