// Kills a process after each call of its save, or in the middle of one. The next process finds the old content or the
// new.
#include "saves/posix/interrupted_save.h"
#include "saves/posix/killed_process.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Effect = Interruption::Effect;

class KilledSave : public InterruptedSave {
protected:
    /// Saves in a child process that is killed at the call. Returns the folder.
    fs::path killAt(std::size_t call, Effect effect)
    {
        const fs::path place = newFolder();
        runUntilKilled([&] {
            const WatchedFolder watched(place, {effect, call, 0});
            static_cast<void>(scenario().save(place)); // the kill ends it
        });
        return place;
    }
    void expectTheNextSaveToSucceed(const fs::path& place)
    {
        EXPECT_TRUE(scenario().save(place));
        EXPECT_EQ(scenario().content(place), after);
        EXPECT_EQ(namesBelow(place), names);
    }
};

TEST_P(KilledSave, SaveKilledAfterACall_LeavesTheOldOrTheNewContent)
{
    std::string last = before;
    for (std::size_t call = 0; call < calls.size(); ++call) {
        SCOPED_TRACE(describeCall(call));
        const fs::path place = killAt(call, Effect::killedAfter);
        const std::string content = scenario().content(place);
        EXPECT_TRUE(content == before || content == after);
        EXPECT_FALSE(content == before && last == after);
        last = content;
        expectTheNextSaveToSucceed(place);
    }
    EXPECT_TRUE(last == after);
}

TEST_P(KilledSave, SaveKilledDuringAWrite_LeavesTheOldOrTheNewContent)
{
    for (std::size_t call = 0; call < calls.size(); ++call) {
        if (calls[call].kind != DiskCall::Kind::write)
            continue;
        SCOPED_TRACE(describeCall(call));
        const fs::path place = killAt(call, Effect::killedHalfway);
        const std::string content = scenario().content(place);
        EXPECT_TRUE(content == before || content == after);
        expectTheNextSaveToSucceed(place);
    }
}

INSTANTIATE_TEST_SUITE_P(Each, KilledSave, testing::Values(kNewFile, kReplacedFile, kLinkedFile), caseName);

} // namespace
} // namespace Tests
