// Kills a process after each call of its save, or in the middle of a write. The next process finds the old content or
// the new.
#include "saves/posix/interrupted_drawing.h"
#include "saves/posix/killed_process.h"

namespace Tests {
namespace {

using Effect = Interruption::Effect;

class KilledDrawing : public InterruptedDrawing {
protected:
    /// Saves in a child process that is killed at the call.
    void killAt(std::size_t call, Effect effect)
    {
        prepare();
        runUntilKilled([&] {
            const WatchedDisk watched(folder, {effect, call, 0});
            static_cast<void>(scenario().save(folder)); // the kill ends it
        });
    }
};

TEST_P(KilledDrawing, SaveKilledAtAnyCall_LeavesTheOldOrTheNewDrawing)
{
    bool isNew = false;
    for (const std::size_t call : interruptedCalls(false)) {
        for (const Effect effect : {Effect::killedHalfway, Effect::killedAfter}) {
            SCOPED_TRACE("call " + std::to_string(call));
            killAt(call, effect);
            const std::string drawings = readDrawingsInACopy();
            ASSERT_TRUE(drawings == before || drawings == after) << drawings.substr(0, 200);
            EXPECT_FALSE(isNew && drawings == before);
            isNew = drawings == after;
            expectTheNextSaveToSucceed(drawings == after);
            if (HasFailure())
                return;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Each, KilledDrawing,
                         testing::Values(kNewDrawing, kChangedDrawing, kShrunkDrawing, kCopiedDrawing,
                                         kOverwrittenDrawing),
                         caseName);

} // namespace
} // namespace Tests
