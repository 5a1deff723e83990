// Two openings of one file in one process: what each may do while the other has it.
#include <chrono>
#include <optional>

#include "host/drawing_file/drawing_file_test.h"

namespace Tests {
namespace {

class FileAccess : public DrawingFileTest {
protected:
    FileAccess() { given(GivenDrawing().withXrecord({{300, L"old"}}, L"key")); }

    /// Another program's change, from opening to saving.
    void changeElsewhere(const std::wstring& text)
    {
        Drawing drawing(loaded(DrawingAccess::changing));
        drawing.withXrecord({{300, text}}, L"key");
        ASSERT_EQ(outcome(save(*drawing.database())), "0");
    }
    std::string locked() const
    {
        return refusal(Qeapp::eFileLocked, "another process is using it and did not release it in time");
    }
    std::string changed() const
    {
        return refusal(Qeapp::eFileChanged, "was changed by another program since it was opened; open it again");
    }
    std::string tryToLoad(DrawingAccess access, int milliseconds = 0) const
    {
        Database database;
        const std::string found = outcome(load(file, database, access, milliseconds));
        EXPECT_EQ(database != nullptr, found == "0");
        return found;
    }
    static std::optional<Items> keyIn(const Database& database)
    {
        // As Drawing::xrecord, without taking the drawing.
        QeDbDictionary* dictionary = nullptr;
        if (database->getNamedObjectsDictionary(dictionary, QeDb::kForRead) != Qeapp::eOk)
            return std::nullopt;
        QeDbObject* object = nullptr;
        const Qeapp::ErrorStatus status = dictionary->getAt(L"key", object, QeDb::kForRead);
        EXPECT_EQ(dictionary->close(), Qeapp::eOk);
        if (status != Qeapp::eOk)
            return std::nullopt;
        Orvel::ResbufChain chain;
        EXPECT_EQ(static_cast<QeDbXrecord*>(object)->rbChain(chain.put(), database.get()), Qeapp::eOk);
        EXPECT_EQ(object->close(), Qeapp::eOk);
        return readChain(chain.get());
    }
};

TEST_F(FileAccess, OneWhoChanges_KeepsOthersFromChangingAndNotFromReading)
{
    const Database changing = loaded(DrawingAccess::changing);
    EXPECT_EQ(tryToLoad(DrawingAccess::changing), locked());
    EXPECT_EQ(tryToLoad(DrawingAccess::reading), "0");
    EXPECT_EQ(tryToLoad(DrawingAccess::sharing), "0");
    EXPECT_EQ(keyIn(loaded()), (Items{{300, L"old"}}));
}

TEST_F(FileAccess, OneWhoReads_KeepsNobodyFromOpening)
{
    const Database reading = loaded(DrawingAccess::reading);
    EXPECT_EQ(tryToLoad(DrawingAccess::reading), "0");
    EXPECT_EQ(tryToLoad(DrawingAccess::changing), "0");
}

TEST_F(FileAccess, OneWhoShares_KeepsNobodyFromSaving)
{
    const Database sharing = loaded(DrawingAccess::sharing);
    changeElsewhere(L"new");
    EXPECT_EQ(keyIn(loaded()), (Items{{300, L"new"}}));
}

TEST_F(FileAccess, OneWhoReads_IsWaitedForBySaves)
{
    Database reading = loaded(DrawingAccess::reading);
    Drawing drawing(loaded(DrawingAccess::changing));
    drawing.withXrecord({{300, L"new"}}, L"key");
    EXPECT_EQ(outcome(save(*drawing.database())), locked());
    EXPECT_EQ(keyIn(reading), (Items{{300, L"old"}}));
    reading.reset();
    EXPECT_EQ(outcome(save(*drawing.database())), "0");
    EXPECT_EQ(keyIn(loaded()), (Items{{300, L"new"}}));
}

TEST_F(FileAccess, ASave_EndsTheLock)
{
    Drawing first(loaded(DrawingAccess::changing));
    first.withXrecord({{300, L"first"}}, L"key");
    ASSERT_EQ(outcome(save(*first.database())), "0");
    EXPECT_EQ(tryToLoad(DrawingAccess::changing), "0");
    first.withXrecord({{300, L"again"}}, L"key");
    EXPECT_EQ(outcome(save(*first.database())), "0") << "from the same opening";
    EXPECT_EQ(keyIn(loaded()), (Items{{300, L"again"}}));
}

TEST_F(FileAccess, AFileThatChanged_IsReportedToAnEarlierOpening)
{
    const Database sharing = loaded(DrawingAccess::sharing);
    changeElsewhere(L"new");
    EXPECT_EQ(keyIn(sharing), std::nullopt);
    EXPECT_EQ(outcome(Embedded::loadingResult(*sharing)), changed());
    EXPECT_EQ(outcome(save(*sharing)), changed());
    EXPECT_EQ(keyIn(loaded()), (Items{{300, L"new"}}));
}

TEST_F(FileAccess, AFileThatChanged_IsNotSavedOverFromAnEarlierOpening)
{
    const Database sharing = loaded(DrawingAccess::sharing);
    Drawing drawing(loaded(DrawingAccess::sharing));
    drawing.withXrecord({{300, L"mine"}}, L"key");
    changeElsewhere(L"theirs");
    EXPECT_EQ(outcome(save(*drawing.database())), changed());
    EXPECT_EQ(keyIn(loaded()), (Items{{300, L"theirs"}}));
}

TEST_F(FileAccess, AFileThatChanged_IsNotCopiedFromAnEarlierOpening)
{
    const Database sharing = loaded(DrawingAccess::sharing);
    changeElsewhere(L"theirs");
    EXPECT_EQ(outcome(Embedded::saveDrawingToBytes(*sharing, sharing->drawingVersion())), changed());
    const auto other = folder.path() / "b.qedb";
    EXPECT_EQ(outcome(Embedded::saveDrawing(*sharing, other, sharing->drawingVersion())), changed());
    EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"});
}

TEST_F(FileAccess, OneWhoReads_SeesTheFileAsItWasWhileAnotherWaitsToCommit)
{
    const Database reading = loaded(DrawingAccess::reading);
    {
        Drawing drawing(loaded(DrawingAccess::changing));
        drawing.withXrecord({{300, L"new"}}, L"key");
        EXPECT_EQ(outcome(save(*drawing.database())), locked());
    }
    EXPECT_EQ(keyIn(reading), (Items{{300, L"old"}}));
    EXPECT_EQ(tryToLoad(DrawingAccess::changing), "0") << "the failed save has let go";
}

TEST_F(FileAccess, AWait_IsReportedAndEndsAfterItsTime)
{
    const Database changing = loaded(DrawingAccess::changing);
    int told = 0;
    LockWait wait = waitOf(40);
    wait.onPause = [&](std::chrono::milliseconds waited) {
        ++told;
        EXPECT_LT(waited.count(), 40);
    };
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(outcome(Embedded::loadDrawing(file, DrawingAccess::changing, wait)), locked());
    EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(40));
    EXPECT_GT(told, 1);
}

TEST_F(FileAccess, NoWait_AsksOnce)
{
    const Database changing = loaded(DrawingAccess::changing);
    LockWait wait = waitOf(0);
    wait.onPause = [](std::chrono::milliseconds) { ADD_FAILURE() << "waited"; };
    EXPECT_EQ(outcome(Embedded::loadDrawing(file, DrawingAccess::changing, wait)), locked());
}

TEST_F(FileAccess, AWait_CanBeEndedByItsListener)
{
    Database changing = loaded(DrawingAccess::changing);
    LockWait wait = waitOf(10'000);
    wait.onPause = [&](std::chrono::milliseconds) { changing.reset(); };
    EXPECT_EQ(outcome(Embedded::loadDrawing(file, DrawingAccess::changing, wait)), "0");
}

TEST_F(FileAccess, ACopyFromAnOpeningThatHoldsTheLock_IsTheWholeDrawing)
{
    Drawing drawing(loaded(DrawingAccess::changing));
    drawing.withXrecord({{300, L"new"}}, L"other");
    EXPECT_EQ(drawingContents(*loadFromBytes(saveToBytes(*drawing.database()))), drawing.contents());
    const auto other = folder.path() / "b.qedb";
    EXPECT_EQ(outcome(Embedded::saveDrawing(*drawing.database(), other, QeDb::kCurrentDwg)), "0");
    EXPECT_EQ(keyIn(loaded()), (Items{{300, L"old"}}));
    EXPECT_EQ(tryToLoad(DrawingAccess::changing), locked()) << "it is still open for changing";
    EXPECT_EQ(outcome(save(*drawing.database())), "0");
    EXPECT_EQ(inFile(), drawing.contents());
}

} // namespace
} // namespace Tests
