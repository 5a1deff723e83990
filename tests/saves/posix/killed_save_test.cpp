// Kills a process after each call of its save, or in the middle of one. The next process finds the old content or the
// new.
#include "saves/posix/interrupted_save.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Effect = Interruption::Effect;

class KilledSave : public InterruptedSave {
protected:
    /// Saves in a child process that is killed at the call. Returns the folder.
    fs::path killedAt(std::size_t call, Effect effect)
    {
        const fs::path place = newFolder();
        const pid_t child = ::fork();
        EXPECT_GE(child, 0);
        if (child == 0) {
            const WatchedFolder watched(place, {effect, call, 0});
            static_cast<void>(scenario().save(place)); // the kill ends it
            ::_exit(0);
        }
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
        return place;
    }
    void expectTheNextSaveToSucceed(const fs::path& place)
    {
        EXPECT_TRUE(scenario().save(place));
        EXPECT_EQ(scenario().content(place), after);
        EXPECT_EQ(namesBelow(place), names);
    }
};

TEST_P(KilledSave, BetweenTwoCalls_LeavesTheOldAndLaterTheNew)
{
    std::string last = before;
    for (std::size_t call = 0; call < calls.size(); ++call) {
        SCOPED_TRACE(nameOf(call));
        const fs::path place = killedAt(call, Effect::killedAfter);
        const std::string found = scenario().content(place);
        EXPECT_TRUE(found == before || found == after);
        EXPECT_FALSE(found == before && last == after);
        last = found;
        expectTheNextSaveToSucceed(place);
    }
    EXPECT_TRUE(last == after);
}

TEST_P(KilledSave, InTheMiddleOfAWrite_LeavesTheOldOrTheNew)
{
    for (std::size_t call = 0; call < calls.size(); ++call) {
        if (calls[call].kind != DiskCall::Kind::write)
            continue;
        SCOPED_TRACE(nameOf(call));
        const fs::path place = killedAt(call, Effect::killedHalfway);
        const std::string found = scenario().content(place);
        EXPECT_TRUE(found == before || found == after);
        expectTheNextSaveToSucceed(place);
    }
}

INSTANTIATE_TEST_SUITE_P(Each, KilledSave, testing::Values(kNewFile, kReplacedFile, kLinkedFile),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

} // namespace
} // namespace Tests
