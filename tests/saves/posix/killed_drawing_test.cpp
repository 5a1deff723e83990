// A process that is killed after each call of its save, or in the middle of a write: the next one finds the old or the
// new.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "saves/posix/interrupted_drawing.h"

namespace Tests {
namespace {

using Way = Interruption::Way;

class KilledDrawing : public InterruptedDrawing {
protected:
    /// Leaves in the folder what a save in a process of its own has left that is killed there.
    void killAt(std::size_t call, Way way)
    {
        prepare();
        const pid_t child = ::fork();
        EXPECT_GE(child, 0);
        if (child == 0) {
            const WatchedDisk watched(folder, {way, call, 0});
            static_cast<void>(scenario().save(folder)); // which does not come to its end
            ::_exit(0);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
    }
};

TEST_P(KilledDrawing, AtAnyCall_LeavesTheOldAndLaterTheNew)
{
    bool isNew = false;
    for (const std::size_t call : interruptedCalls(false)) {
        for (const Way way : {Way::killedHalfway, Way::killedAfter}) {
            SCOPED_TRACE("call " + std::to_string(call));
            killAt(call, way);
            const std::string left = foundInACopy(); // so that the next save is the first to see what was left
            ASSERT_TRUE(left == before || left == after) << left.substr(0, 200);
            EXPECT_FALSE(isNew && left == before);
            isNew = left == after;
            expectTheNextSaveToSucceed(left == after);
            if (HasFailure())
                return;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Each, KilledDrawing,
                         testing::Values(kNewDrawing, kChangedDrawing, kShrunkDrawing, kCopiedDrawing,
                                         kOverwrittenDrawing),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

} // namespace
} // namespace Tests
