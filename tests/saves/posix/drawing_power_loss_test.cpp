// The power fails at any moment of a save of a drawing. Every state of the disk must have the old drawing or the new.
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

    /// The drawings after a power loss at any moment of the calls. Checks only some of the many similar states.
    std::set<std::string> drawingsAtAnyMoment(const std::vector<DiskCall>& saveCalls)
    {
        constexpr std::size_t kStride = ORVEL_TEXT_STRIDE > 1 ? 41 : 7;
        std::set<std::string> contents = drawingsAfter(saveCalls);
        SimulatedDisk disk(folder, initialContents_);
        std::size_t number = 0;
        for (const DiskCall& call : saveCalls) {
            disk.apply(call);
            for (const FolderContents& state : disk.statesAfterPowerLoss()) {
                if (number++ % kStride == 0)
                    contents.insert(classify(state));
            }
        }
        return contents;
    }
    /// The drawings after a power loss behind the last call.
    std::set<std::string> drawingsAfter(const std::vector<DiskCall>& saveCalls)
    {
        SimulatedDisk disk(folder, initialContents_);
        for (const DiskCall& call : saveCalls)
            disk.apply(call);
        std::set<std::string> contents;
        for (const FolderContents& state : disk.statesAfterPowerLoss())
            contents.insert(classify(state));
        return contents;
    }
    /// Opens the drawings of a state. Returns "the old", "the new" or other contents.
    std::string classify(const FolderContents& state)
    {
        makeFolder(restored_.path() / "drawings", state);
        const std::string drawings = readDrawingsIn(restored_.path() / "drawings");
        return drawings == before ? "the old" : drawings == after ? "the new" : drawings.substr(0, 200);
    }

    FolderContents initialContents_;

private:
    TemporaryFolder restored_;
};

TEST_P(DrawingPowerLoss, RecordedCalls_AreAllCallsOfTheSave)
{
    SimulatedDisk disk(folder, initialContents_);
    for (const DiskCall& call : calls)
        disk.apply(call);
    EXPECT_TRUE(disk.visibleContents() == contentsBelow(folder));
}

TEST_P(DrawingPowerLoss, PowerLossDuringTheSave_LeavesTheOldOrTheNewDrawing)
{
    EXPECT_EQ(drawingsAtAnyMoment(calls), (std::set<std::string>{"the new", "the old"}));
}

TEST_P(DrawingPowerLoss, PowerLossAfterTheSave_LeavesTheNewDrawing)
{
    EXPECT_EQ(drawingsAfter(calls), std::set<std::string>{"the new"});
}

INSTANTIATE_TEST_SUITE_P(Each, DrawingPowerLoss, testing::Values(kNewDrawing, kChangedDrawing, kShrunkDrawing),
                         caseName);

/// Shows that the simulated disk detects a save that does not flush its journal.
class UnflushedDrawing : public DrawingPowerLoss {};

TEST_P(UnflushedDrawing, UnflushedJournal_LeavesADamagedDrawing)
{
    SimulatedDisk disk(folder, initialContents_);
    bool isDamaged = false;
    for (const DiskCall& call : calls) {
        const bool isJournal = call.path.extension() == ".qedb-journal";
        if (call.kind == DiskCall::Kind::flush || (isJournal && call.kind == DiskCall::Kind::write))
            continue; // the writes to the journal did not reach the disk
        disk.apply(call);
    }
    for (const FolderContents& state : disk.statesAfterPowerLoss()) {
        const std::string drawings = classify(state);
        isDamaged = isDamaged || (drawings != "the old" && drawings != "the new");
    }
    EXPECT_TRUE(isDamaged);
}

INSTANTIATE_TEST_SUITE_P(Each, UnflushedDrawing, testing::Values(kChangedDrawing), caseName);

} // namespace
} // namespace Tests
