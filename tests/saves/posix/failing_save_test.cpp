// Every call of a save fails, once or from then on, or does only a part of its work. A save that reports success has
// saved the file, and one that reports failure has changed nothing.
#include "saves/posix/interrupted_save.h"

#include <cerrno>

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Effect = Interruption::Effect;

class FailingSave : public InterruptedSave {
protected:
    struct Outcome {
        bool succeeded = false;
        fs::path folder;
        std::vector<DiskCall> calls;
    };

    Outcome saveWith(const Interruption& interruption)
    {
        const fs::path place = newFolder();
        const WatchedFolder watched(place, interruption);
        const bool succeeded = scenario().save(place);
        return {succeeded, place, watched.calls()};
    }
    /// Interrupts each call in turn, and finally none.
    template <class Check>
    void atEachCall(Effect effect, int error, Check check)
    {
        for (std::size_t call = 0;; ++call) {
            SCOPED_TRACE(describeCall(call));
            const Outcome outcome = saveWith({effect, call, error});
            EXPECT_EQ(scenario().content(outcome.folder), outcome.succeeded ? after : before);
            check(outcome);
            if (call >= outcome.calls.size())
                break;
        }
    }
    static bool canBeInterrupted(const DiskCall& call)
    {
        using enum DiskCall::Kind;
        constexpr DiskCall::Kind kinds[] = {open, create, write, truncate, flush, close};
        return std::ranges::find(kinds, call.kind) != std::end(kinds) || call.name == "flock";
    }
    void expectNoTemporaryFile(const Outcome& outcome)
    {
        for (const std::string& name : namesBelow(outcome.folder))
            EXPECT_EQ(name.find(".saving-"), std::string::npos) << name;
    }
    void expectTheNextSaveToSucceed(const Outcome& outcome)
    {
        EXPECT_TRUE(scenario().save(outcome.folder));
        EXPECT_EQ(scenario().content(outcome.folder), after);
        EXPECT_EQ(namesBelow(outcome.folder), names);
    }
};

TEST_P(FailingSave, FailedCall_LeavesTheOldOrTheNewContentAndNoTemporaryFile)
{
    for (const int error : {EIO, EACCES, ENOSPC}) {
        atEachCall(Effect::fails, error, [&](const Outcome& outcome) {
            expectNoTemporaryFile(outcome);
            expectTheNextSaveToSucceed(outcome);
        });
    }
}

TEST_P(FailingSave, FailedDisk_LeavesTheOldOrTheNewContent)
{
    atEachCall(Effect::failsFromHereOn, EIO, [&](const Outcome& outcome) { expectTheNextSaveToSucceed(outcome); });
}

TEST_P(FailingSave, InterruptingSignal_DoesNotFailTheSave)
{
    for (std::size_t call = 0; call < calls.size(); ++call) {
        if (!canBeInterrupted(calls[call]))
            continue;
        SCOPED_TRACE(describeCall(call));
        const Outcome outcome = saveWith({Effect::interrupted, call, 0});
        EXPECT_TRUE(outcome.succeeded);
        EXPECT_EQ(scenario().content(outcome.folder), after);
        EXPECT_EQ(namesBelow(outcome.folder), names);
    }
}

TEST_P(FailingSave, WriteOfOneByte_IsContinued)
{
    atEachCall(Effect::writesOne, 0, [&](const Outcome& outcome) { EXPECT_TRUE(outcome.succeeded); });
}

TEST_P(FailingSave, WriteOfZeroBytes_FailsTheSave)
{
    std::size_t refused = 0;
    atEachCall(Effect::writesNone, 0, [&](const Outcome& outcome) {
        refused += outcome.succeeded ? 0U : 1U;
        expectNoTemporaryFile(outcome);
    });
    EXPECT_GE(refused, 1U);
}

INSTANTIATE_TEST_SUITE_P(Each, FailingSave, testing::Values(kNewFile, kReplacedFile, kLinkedFile), caseName);

} // namespace
} // namespace Tests
