// Every disk call of SQLite fails, once or from then on, or writes half of its bytes. A save that reports success has
// saved the drawing, and one that reports failure has changed nothing.
#include <sqlite3.h>

#include "embedded/host/drawing_file/drawing_file.h"
#include "saves/posix/interrupted_drawing.h"
#include "support/drawing.h"
#include "support/error_text.h"
#include "support/file_text.h"

namespace Tests {
namespace {

using Effect = Interruption::Effect;

class FailingDrawing : public InterruptedDrawing {
protected:
    /// Interrupts each call in turn. `check` receives whether the new drawing is saved.
    template <class Check>
    void atEachCall(Effect effect, int error, Check check)
    {
        for (const std::size_t call : interruptedCalls(true)) {
            SCOPED_TRACE("call " + std::to_string(call));
            prepare();
            bool succeeded = false;
            {
                const WatchedDisk watched(folder, {effect, call, error});
                succeeded = scenario().save(folder);
            }
            const std::string drawings = readDrawings();
            EXPECT_TRUE(drawings == after || (drawings == before && !succeeded)) << drawings.substr(0, 200);
            // SQLite may have to shorten the file after a commit, and reports a failure if it cannot.
            EXPECT_TRUE(drawings == before || succeeded || scenario().shortensItsFile);
            check(drawings == after);
            if (HasFailure())
                return;
        }
    }
};

TEST_P(FailingDrawing, FailedCall_LeavesTheOldOrTheNewDrawingAndNoJournal)
{
    int refused = 0;
    atEachCall(Effect::fails, SQLITE_FULL, [&](bool isDone) {
        refused += isDone ? 0 : 1;
        expectNoJournal();
        expectTheNextSaveToSucceed(isDone);
    });
    EXPECT_GT(refused, 5);
}

TEST_P(FailingDrawing, FailedDisk_LeavesTheOldOrTheNewDrawing)
{
    atEachCall(Effect::failsFromHereOn, SQLITE_IOERR_WRITE, [&](bool isDone) { expectTheNextSaveToSucceed(isDone); });
}

TEST_P(FailingDrawing, PartialWrite_LeavesTheOldOrTheNewDrawingAndNoJournal)
{
    atEachCall(Effect::writesOne, SQLITE_FULL, [&](bool isDone) {
        expectNoJournal();
        expectTheNextSaveToSucceed(isDone);
    });
}

INSTANTIATE_TEST_SUITE_P(Each, FailingDrawing,
                         testing::Values(kNewDrawing, kChangedDrawing, kShrunkDrawing, kCopiedDrawing,
                                         kOverwrittenDrawing),
                         caseName);

/// A drawing that stays open when its save has failed.
class FailedDrawing : public PlatformTest {
protected:
    FailedDrawing()
    {
        Drawing drawing;
        for (int number = 0; number < 8; ++number)
            drawing.withXrecord({{300, std::wstring(2'000, L'o')}}, std::to_wstring(number).c_str());
        bytes_ = saveToBytes(*drawing.database());
    }
    Drawing openAndChange() const
    {
        writeFile(file, bytes_);
        Drawing drawing(Embedded::loadDrawing(file, Embedded::DrawingAccess::changing).value());
        for (int number = 0; number < 6; ++number)
            drawing.withXrecord({{300, std::wstring(1'000, L'n')}}, std::to_wstring(number).c_str());
        return drawing;
    }
    Embedded::Expected<void> save(const Drawing& drawing) const
    {
        return Embedded::saveDrawing(*drawing.database(), file, QeDb::kCurrentDwg);
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "a.qedb";

private:
    std::string bytes_;
};

TEST_F(FailedDrawing, OpenDrawingWhoseSaveFailed_CanBeSavedAgain)
{
    std::size_t count = 0;
    {
        const Drawing drawing = openAndChange();
        const WatchedDisk watched(folder.path());
        ASSERT_EQ(errorText(save(drawing)), "");
        count = watched.isQuery().size();
    }
    int failed = 0;
    for (std::size_t call = 0; call<count; call += ORVEL_TEXT_STRIDE> 1 ? 7 : 1) {
        SCOPED_TRACE("call " + std::to_string(call) + " of " + std::to_string(count));
        const Drawing drawing = openAndChange();
        const std::string contents = drawing.contents();
        {
            const WatchedDisk watched(folder.path(), {Effect::fails, call, SQLITE_FULL});
            failed += save(drawing) ? 0 : 1;
        }
        EXPECT_EQ(drawing.contents(), contents);
        {
            const WatchedDisk watched(folder.path()); // so that the save does not wait for the disk
            EXPECT_EQ(errorText(save(drawing)), "");
        }
        EXPECT_EQ(drawingContents(*Embedded::loadDrawing(file).value()), contents);
        if (HasFailure())
            return;
    }
    EXPECT_GT(failed, 1);
}

} // namespace
} // namespace Tests
