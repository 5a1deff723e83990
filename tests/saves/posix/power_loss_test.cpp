// The power fails at any moment of a save. Every state of the disk must have the old content or the new.
#include "saves/posix/interrupted_save.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class PowerLoss : public InterruptedSave {
protected:
    /// The contents after a power loss at any moment of the calls.
    std::set<std::string> contentsAtAnyMoment(const std::vector<DiskCall>& saveCalls)
    {
        std::set<std::string> contents;
        SimulatedDisk disk(folder, initialContents);
        addContents(disk, contents);
        for (const DiskCall& call : saveCalls) {
            disk.apply(call);
            addContents(disk, contents);
        }
        return contents;
    }
    /// The contents after a power loss behind the last call.
    std::set<std::string> contentsAfter(const std::vector<DiskCall>& saveCalls)
    {
        SimulatedDisk disk(folder, initialContents);
        for (const DiskCall& call : saveCalls)
            disk.apply(call);
        std::set<std::string> contents;
        states_.clear();
        addContents(disk, contents);
        return contents;
    }
    std::vector<DiskCall> callsWithoutFlushes() const
    {
        std::vector<DiskCall> remaining = calls;
        std::erase_if(remaining, [](const DiskCall& call) { return call.kind == DiskCall::Kind::flush; });
        return remaining;
    }

private:
    void addContents(const SimulatedDisk& disk, std::set<std::string>& contents)
    {
        for (const FolderContents& state : disk.statesAfterPowerLoss()) {
            if (!states_.insert(state).second)
                continue;
            makeFolder(restored_.path() / "files", state);
            contents.insert(scenario().content(restored_.path() / "files"));
        }
    }

    TemporaryFolder restored_;
    std::set<FolderContents> states_; // the states that were read
};

TEST_P(PowerLoss, RecordedCalls_AreAllCallsOfTheSave)
{
    SimulatedDisk disk(folder, initialContents);
    for (const DiskCall& call : calls)
        disk.apply(call);
    EXPECT_EQ(disk.visibleContents(), contentsBelow(folder));
}

TEST_P(PowerLoss, PowerLossDuringTheSave_LeavesTheOldOrTheNewContent)
{
    EXPECT_EQ(contentsAtAnyMoment(calls), (std::set<std::string>{before, after}));
}

/// Replacing a file returns only when the new content is on the disk.
TEST_P(PowerLoss, PowerLossAfterTheSave_LeavesTheNewContent)
{
    EXPECT_EQ(contentsAfter(calls), std::set<std::string>{after});
}

TEST_P(PowerLoss, PowerLossWithoutFlushes_LeavesOtherContent)
{
    EXPECT_GT(contentsAtAnyMoment(callsWithoutFlushes()).size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Each, PowerLoss, testing::Values(kNewFile, kReplacedFile), caseName);

} // namespace
} // namespace Tests
