// The power fails at some moment of a save. In every state in which the disk may be found, the old content or the new
// is there.
#include "saves/posix/interrupted_save.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class PowerLoss : public InterruptedSave {
protected:
    /// The contents that a program finds in every state of the disk at any moment of the calls.
    std::set<std::string> foundAtAnyMoment(const std::vector<DiskCall>& saved)
    {
        std::set<std::string> contents;
        SimulatedDisk disk(folder, initialContents);
        addFound(disk, contents);
        for (const DiskCall& call : saved) {
            disk.apply(call);
            addFound(disk, contents);
        }
        return contents;
    }
    std::set<std::string> foundAfter(const std::vector<DiskCall>& saved)
    {
        SimulatedDisk disk(folder, initialContents);
        for (const DiskCall& call : saved)
            disk.apply(call);
        std::set<std::string> contents;
        states_.clear();
        addFound(disk, contents);
        return contents;
    }
    std::vector<DiskCall> callsWithoutFlushes() const
    {
        std::vector<DiskCall> left = calls;
        std::erase_if(left, [](const DiskCall& call) { return call.kind == DiskCall::Kind::flush; });
        return left;
    }

private:
    void addFound(const SimulatedDisk& disk, std::set<std::string>& contents)
    {
        for (const FolderContents& state : disk.afterPowerLoss()) {
            if (!states_.insert(state).second)
                continue;
            makeFolder(place_.path() / "found", state);
            contents.insert(scenario().content(place_.path() / "found"));
        }
    }

    TemporaryFolder place_;
    std::set<FolderContents> states_; // the states that were opened
};

TEST_P(PowerLoss, TheCallsAreAllThatTheSaveDoes)
{
    SimulatedDisk disk(folder, initialContents);
    for (const DiskCall& call : calls)
        disk.apply(call);
    EXPECT_EQ(disk.seen(), contentsBelow(folder));
}

TEST_P(PowerLoss, AtAnyMoment_LeavesTheOldOrTheNew)
{
    EXPECT_EQ(foundAtAnyMoment(calls), (std::set<std::string>{before, after}));
}

INSTANTIATE_TEST_SUITE_P(Each, PowerLoss, testing::Values(kNewFile, kReplacedFile),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

/// Replacing a file returns only when the new content is on the disk.
class PowerLossOfAWholeFile : public PowerLoss {};

TEST_P(PowerLossOfAWholeFile, AfterTheSave_LeavesTheNew)
{
    EXPECT_EQ(foundAfter(calls), std::set<std::string>{after});
}

TEST_P(PowerLossOfAWholeFile, WithoutTheFlushes_WouldLeaveNeither)
{
    EXPECT_GT(foundAtAnyMoment(callsWithoutFlushes()).size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Each, PowerLossOfAWholeFile, testing::Values(kNewFile, kReplacedFile),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

} // namespace
} // namespace Tests
