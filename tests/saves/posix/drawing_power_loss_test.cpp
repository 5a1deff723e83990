// The power fails at some moment of a drawing's save. In every state in which the disk may be found, the old drawing or
// the new is there.
#include "saves/posix/interrupted_drawing.h"
#include "saves/posix/simulated_disk.h"

namespace Tests {
namespace {

class DrawingPowerLoss : public InterruptedDrawing {
protected:
    DrawingPowerLoss()
    {
        initialContents_ = scenario().initialContents();
        initialContents_.try_emplace("a.qedb"); // a new drawing begins as an empty file
    }

    /// The drawings that a program finds in some of the states of the disk at any moment of the calls. There are many
    /// states, and neighbours are alike.
    std::set<std::string> foundAtAnyMoment(const std::vector<DiskCall>& saved)
    {
        constexpr std::size_t kStride = ORVEL_TEXT_STRIDE > 1 ? 41 : 7;
        std::set<std::string> contents = foundAfter(saved);
        SimulatedDisk disk(folder, initialContents_);
        std::size_t number = 0;
        for (const DiskCall& call : saved) {
            disk.apply(call);
            for (const FolderContents& state : disk.afterPowerLoss()) {
                if (number++ % kStride == 0)
                    contents.insert(foundIn(state));
            }
        }
        return contents;
    }
    std::set<std::string> foundAfter(const std::vector<DiskCall>& saved)
    {
        SimulatedDisk disk(folder, initialContents_);
        for (const DiskCall& call : saved)
            disk.apply(call);
        std::set<std::string> contents;
        for (const FolderContents& state : disk.afterPowerLoss())
            contents.insert(foundIn(state));
        return contents;
    }
    std::string foundIn(const FolderContents& state)
    {
        makeFolder(place_.path() / "found", state);
        const std::string found = drawingsIn(place_.path() / "found");
        return found == before ? "the old" : found == after ? "the new" : found.substr(0, 200);
    }

    FolderContents initialContents_;

private:
    TemporaryFolder place_;
};

TEST_P(DrawingPowerLoss, TheCallsAreAllThatTheSaveDoes)
{
    FolderContents initialContents = scenario().initialContents();
    initialContents.try_emplace("a.qedb");
    SimulatedDisk disk(folder, initialContents);
    for (const DiskCall& call : calls)
        disk.apply(call);
    EXPECT_TRUE(disk.seen() == contentsBelow(folder));
}

TEST_P(DrawingPowerLoss, AtAnyMoment_LeavesTheOldOrTheNew)
{
    EXPECT_EQ(foundAtAnyMoment(calls), (std::set<std::string>{"the new", "the old"}));
}

TEST_P(DrawingPowerLoss, AfterTheSave_LeavesTheNew)
{
    EXPECT_EQ(foundAfter(calls), std::set<std::string>{"the new"});
}

INSTANTIATE_TEST_SUITE_P(Each, DrawingPowerLoss, testing::Values(kNewDrawing, kChangedDrawing, kShrunkDrawing),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

/// The simulated states are bad enough to show a save that does not flush its journal.
class UnflushedDrawing : public DrawingPowerLoss {};

TEST_P(UnflushedDrawing, MightBeLeftAsNeither)
{
    SimulatedDisk disk(folder, initialContents_);
    bool isNeither = false;
    for (const DiskCall& call : calls) {
        const bool isJournals = call.path.extension() == ".qedb-journal";
        if (call.kind == DiskCall::Kind::flush || (isJournals && call.kind == DiskCall::Kind::write))
            continue; // the writes to the journal did not reach the disk
        disk.apply(call);
    }
    for (const FolderContents& state : disk.afterPowerLoss()) {
        const std::string found = foundIn(state);
        isNeither = isNeither || (found != "the old" && found != "the new");
    }
    EXPECT_TRUE(isNeither);
}

INSTANTIATE_TEST_SUITE_P(Each, UnflushedDrawing, testing::Values(kChangedDrawing),
                         [](const auto& scenario) { return std::string(scenario.param.name); });

} // namespace
} // namespace Tests
