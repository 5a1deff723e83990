// Kills a process after each call of its save, or in the middle of a write. The next process finds the old content or
// the new.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "saves/posix/interrupted_drawing.h"

namespace Tests {
namespace {

using Effect = Interruption::Effect;

class KilledDrawing : public InterruptedDrawing {
protected:
    /// Saves in a child process that is killed at the call.
    void killAt(std::size_t call, Effect effect)
    {
        prepare();
        const pid_t child = ::fork();
        EXPECT_GE(child, 0);
        if (child == 0) {
            const WatchedDisk watched(folder, {effect, call, 0});
            static_cast<void>(scenario().save(folder)); // the kill ends it
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
        for (const Effect effect : {Effect::killedHalfway, Effect::killedAfter}) {
            SCOPED_TRACE("call " + std::to_string(call));
            killAt(call, effect);
            const std::string left = foundInACopy(); // a copy, so that the next save is the first to open what was left
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
