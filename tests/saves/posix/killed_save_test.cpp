// A process that is killed after each call of its save, or in the middle of one: the next one finds the old or the new.
#include "saves/posix/interrupted_save.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Way = Interruption::Way;

class KilledSave : public InterruptedSave {
protected:
    /// What is left of a save in a process of its own that is killed there.
    fs::path killedAt(std::size_t call, Way way)
    {
        const fs::path place = fresh();
        const pid_t child = ::fork();
        EXPECT_GE(child, 0);
        if (child == 0) {
            const WatchedFolder watched(place, {way, call, 0});
            static_cast<void>(scenario().save(place)); // which does not come to its end
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
        const fs::path place = killedAt(call, Way::killedAfter);
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
        const fs::path place = killedAt(call, Way::killedHalfway);
        const std::string found = scenario().content(place);
        EXPECT_TRUE(found == before || found == after);
        expectTheNextSaveToSucceed(place);
    }
}

INSTANTIATE_TEST_SUITE_P(Each, KilledSave, testing::Values(kNewFile, kReplacedFile, kLinkedFile),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

} // namespace
} // namespace Tests
