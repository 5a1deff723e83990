// Two connections of one process to one file, and what each may do while the other exists.
#include <chrono>
#include <optional>

#include "host/drawing_file/drawing_file_test.h"

namespace Tests {
namespace {

class FileAccess : public DrawingFileTest {
protected:
    FileAccess() { writeDrawing(GivenDrawing().withXrecord({{300, L"old"}}, L"key")); }

    /// Opens, changes and saves the file through a connection of its own.
    void changeThroughAnotherConnection(const std::wstring& text)
    {
        Drawing drawing(loadFile(DrawingAccess::changing));
        drawing.withXrecord({{300, text}}, L"key");
        ASSERT_EQ(outcome(save(*drawing.database())), "0");
    }
    /// The items of the xrecord. Unlike Drawing::xrecord this does not take the database over.
    static std::optional<Items> readXrecord(const Database& database)
    {
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

TEST_F(FileAccess, DrawingOpenForChanging_CanBeReadButNotOpenedForChangingAgain)
{
    const Database changing = loadFile(DrawingAccess::changing);
    EXPECT_EQ(tryToLoad(file, DrawingAccess::changing), lockedRefusal());
    EXPECT_EQ(tryToLoad(file, DrawingAccess::reading), "0");
    EXPECT_EQ(tryToLoad(file, DrawingAccess::sharing), "0");
    EXPECT_EQ(readXrecord(loadFile()), (Items{{300, L"old"}}));
}

TEST_F(FileAccess, DrawingOpenForReading_CanBeOpenedForReadingAndChanging)
{
    const Database reading = loadFile(DrawingAccess::reading);
    EXPECT_EQ(tryToLoad(file, DrawingAccess::reading), "0");
    EXPECT_EQ(tryToLoad(file, DrawingAccess::changing), "0");
}

TEST_F(FileAccess, DrawingOpenForSharing_CanBeSavedByAnother)
{
    const Database sharing = loadFile(DrawingAccess::sharing);
    changeThroughAnotherConnection(L"new");
    EXPECT_EQ(readXrecord(loadFile()), (Items{{300, L"new"}}));
}

TEST_F(FileAccess, DrawingOpenForReading_DelaysASave)
{
    Database reading = loadFile(DrawingAccess::reading);
    Drawing drawing(loadFile(DrawingAccess::changing));
    drawing.withXrecord({{300, L"new"}}, L"key");
    EXPECT_EQ(outcome(save(*drawing.database())), lockedRefusal());
    EXPECT_EQ(readXrecord(reading), (Items{{300, L"old"}}));
    reading.reset();
    EXPECT_EQ(outcome(save(*drawing.database())), "0");
    EXPECT_EQ(readXrecord(loadFile()), (Items{{300, L"new"}}));
}

TEST_F(FileAccess, Save_ReleasesTheLock)
{
    Drawing first(loadFile(DrawingAccess::changing));
    first.withXrecord({{300, L"first"}}, L"key");
    ASSERT_EQ(outcome(save(*first.database())), "0");
    EXPECT_EQ(tryToLoad(file, DrawingAccess::changing), "0");
    first.withXrecord({{300, L"again"}}, L"key");
    EXPECT_EQ(outcome(save(*first.database())), "0") << "through the same connection";
    EXPECT_EQ(readXrecord(loadFile()), (Items{{300, L"again"}}));
}

TEST_F(FileAccess, ChangedFile_CannotBeReadThroughAnEarlierOpening)
{
    const Database sharing = loadFile(DrawingAccess::sharing);
    changeThroughAnotherConnection(L"new");
    EXPECT_EQ(readXrecord(sharing), std::nullopt);
    EXPECT_EQ(outcome(Embedded::loadingResult(*sharing)), changedRefusal());
    EXPECT_EQ(outcome(save(*sharing)), changedRefusal());
    EXPECT_EQ(readXrecord(loadFile()), (Items{{300, L"new"}}));
}

TEST_F(FileAccess, ChangedFile_IsNotOverwrittenFromAnEarlierOpening)
{
    const Database sharing = loadFile(DrawingAccess::sharing);
    Drawing drawing(loadFile(DrawingAccess::sharing));
    drawing.withXrecord({{300, L"mine"}}, L"key");
    changeThroughAnotherConnection(L"theirs");
    EXPECT_EQ(outcome(save(*drawing.database())), changedRefusal());
    EXPECT_EQ(readXrecord(loadFile()), (Items{{300, L"theirs"}}));
}

TEST_F(FileAccess, ChangedFile_CannotBeCopiedFromAnEarlierOpening)
{
    const Database sharing = loadFile(DrawingAccess::sharing);
    changeThroughAnotherConnection(L"theirs");
    EXPECT_EQ(outcome(Embedded::saveDrawingToBytes(*sharing, sharing->drawingVersion())), changedRefusal());
    const auto copy = folder.path() / "b.qedb";
    EXPECT_EQ(outcome(Embedded::saveDrawing(*sharing, copy, sharing->drawingVersion())), changedRefusal());
    EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"});
}

TEST_F(FileAccess, DrawingOpenForReading_StaysTheSameWhileAnotherWaitsToCommit)
{
    const Database reading = loadFile(DrawingAccess::reading);
    {
        Drawing drawing(loadFile(DrawingAccess::changing));
        drawing.withXrecord({{300, L"new"}}, L"key");
        EXPECT_EQ(outcome(save(*drawing.database())), lockedRefusal());
    }
    EXPECT_EQ(readXrecord(reading), (Items{{300, L"old"}}));
    EXPECT_EQ(tryToLoad(file, DrawingAccess::changing), "0") << "the failed save has released its lock";
}

TEST_F(FileAccess, WaitForALock_IsReportedAndTimesOut)
{
    const Database changing = loadFile(DrawingAccess::changing);
    int reports = 0;
    LockWait wait = lockWait(40);
    wait.onPause = [&](std::chrono::milliseconds waited) {
        ++reports;
        EXPECT_LT(waited.count(), 40);
    };
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(outcome(Embedded::loadDrawing(file, DrawingAccess::changing, wait)), lockedRefusal());
    EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(40));
    EXPECT_GT(reports, 1);
}

TEST_F(FileAccess, WaitOfZero_TriesOnce)
{
    const Database changing = loadFile(DrawingAccess::changing);
    LockWait wait = lockWait(0);
    wait.onPause = [](std::chrono::milliseconds) { ADD_FAILURE() << "waited"; };
    EXPECT_EQ(outcome(Embedded::loadDrawing(file, DrawingAccess::changing, wait)), lockedRefusal());
}

TEST_F(FileAccess, WaitForALock_SucceedsWhenTheCallbackReleasesTheLock)
{
    Database changing = loadFile(DrawingAccess::changing);
    LockWait wait = lockWait(10'000);
    wait.onPause = [&](std::chrono::milliseconds) { changing.reset(); };
    EXPECT_EQ(outcome(Embedded::loadDrawing(file, DrawingAccess::changing, wait)), "0");
}

TEST_F(FileAccess, CopyOfALockedDrawing_HasTheWholeDrawingAndKeepsTheLock)
{
    Drawing drawing(loadFile(DrawingAccess::changing));
    drawing.withXrecord({{300, L"new"}}, L"other");
    EXPECT_EQ(drawingContents(*loadFromBytes(saveToBytes(*drawing.database()))), drawing.contents());
    const auto copy = folder.path() / "b.qedb";
    EXPECT_EQ(outcome(Embedded::saveDrawing(*drawing.database(), copy, QeDb::kCurrentDwg)), "0");
    EXPECT_EQ(readXrecord(loadFile()), (Items{{300, L"old"}}));
    EXPECT_EQ(tryToLoad(file, DrawingAccess::changing), lockedRefusal()) << "it is still open for changing";
    EXPECT_EQ(outcome(save(*drawing.database())), "0");
    EXPECT_EQ(fileContents(), drawing.contents());
}

} // namespace
} // namespace Tests
