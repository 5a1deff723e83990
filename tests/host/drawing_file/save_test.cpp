// Saves drawings with reactors that convert them, and with failures. Checks the file and the open drawing afterwards.
#include <optional>
#include <vector>

#include "embedded/diagnostics/fault_injection.h"
#include "host/drawing_file/drawing_file_test.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Embedded::Overwriting;
using Embedded::saveDrawing;
using Embedded::ScopedFault;

QeDb::QeDbDwgVersion version(int number)
{
    return static_cast<QeDb::QeDbDwgVersion>(number);
}

/// Adds an xrecord to the drawing, reports an error if the test asks for one, and records its notifications.
class Decomposer final : public QeDbDecompositionReactor {
public:
    Decomposer() { EXPECT_EQ(qedbGetDecompositionManager()->addReactor(this), Qeapp::eOk); }
    ~Decomposer() { EXPECT_EQ(qedbGetDecompositionManager()->removeReactor(this), Qeapp::eOk); }

    Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database, QeDb::QeDbDwgVersion target,
                                        QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages) override
    {
        notifications.push_back("decompose " + std::to_string(target));
        addRecord(*database);
        if (recorded) {
            const Qeapp::ErrorStatus status =
                message.empty() ? errors->recordError(*recorded) : messages->recordError(*recorded, message.c_str());
            EXPECT_EQ(status, Qeapp::eOk);
        }
        return result;
    }
    void saveCompleted(QeDbDatabase* database, QeDb::QeDbDwgVersion target) override
    {
        notifications.push_back("completed " + std::to_string(target));
        EXPECT_EQ(database->drawingVersion(), target);
    }
    void saveAborted(QeDbDatabase*, QeDb::QeDbDwgVersion target) override
    {
        notifications.push_back("aborted " + std::to_string(target));
    }

    std::vector<std::string> notifications;
    Qeapp::ErrorStatus result = Qeapp::eOk;
    std::optional<Qeapp::ErrorStatus> recorded;
    std::wstring message;

private:
    static void addRecord(QeDbDatabase& database)
    {
        QeDbDictionary* dictionary = nullptr;
        ASSERT_EQ(database.getNamedObjectsDictionary(dictionary, QeDb::kForWrite), Qeapp::eOk);
        auto* record = new QeDbXrecord;
        QeDbObjectId id;
        EXPECT_EQ(dictionary->setAt(L"DECOMPOSED", record, id), Qeapp::eOk);
        EXPECT_EQ(record->close(), Qeapp::eOk);
        EXPECT_EQ(dictionary->close(), Qeapp::eOk);
    }
};

class DrawingFileSave : public DrawingFileTest {
protected:
    using Notifications = std::vector<std::string>;

    DrawingFileSave()
    {
        writeDrawing(GivenDrawing(version(29)).withLegacyCode(L"EPSG:25832").withXrecord({{300, L"text"}}, L"key"));
        database = loadFile(DrawingAccess::changing);
        before = drawingContents(*database);
    }
    Expected<void> tryToSave(int target) const
    {
        return saveDrawing(*database, file, version(target), Overwriting::refused, lockWait(0));
    }
    void save(int target) { EXPECT_EQ(outcome(tryToSave(target)), "0"); }
    /// The save must fail, and change neither the file nor the drawing.
    void expectFailedSave(int target, const std::string& failure)
    {
        const std::string bytes = readFile(file);
        EXPECT_EQ(outcome(tryToSave(target)), failure);
        EXPECT_EQ(drawingContents(*database), before);
        EXPECT_TRUE(readFile(file) == bytes);
        EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"});
    }
    std::filesystem::path copyFile() const { return folder.path() / "b.qedb"; }

    Database database;
    std::string before;
};

TEST_F(DrawingFileSave, SavedNewDrawing_IsLoadedWithTheSameContents)
{
    database = std::make_unique<QeDbDatabase>(version(33));
    std::filesystem::remove(file);
    save(33);
    EXPECT_EQ(fileContents(), drawingContents(*database));
}

TEST_F(DrawingFileSave, NewDrawing_IsNotSavedTwice)
{
    database = std::make_unique<QeDbDatabase>(version(33));
    std::filesystem::remove(file);
    save(33);
    before = drawingContents(*database);
    expectFailedSave(33, refusal(Qeapp::eFileExists, "the file exists already"));
}

TEST_F(DrawingFileSave, TwoNewDrawings_HoldTheSameBytes)
{
    QeDbDatabase first;
    QeDbDatabase second;
    EXPECT_TRUE(saveToBytes(first) == saveToBytes(second));
    database.reset();
    std::filesystem::remove(file);
    EXPECT_EQ(outcome(saveDrawing(first, file, version(33))), "0");
    EXPECT_EQ(outcome(saveDrawing(second, copyFile(), version(33))), "0");
    EXPECT_TRUE(readFile(file) == readFile(copyFile()));
}

TEST_F(DrawingFileSave, SaveInAnotherVersion_ChangesTheVersionOfTheOpenDrawing)
{
    save(33);
    EXPECT_EQ(database->drawingVersion(), 33);
    EXPECT_EQ(fileContents(), drawingContents(*database));
    EXPECT_EQ(loadFile()->drawingVersion(), 33);
}

TEST_F(DrawingFileSave, UnknownVersion_IsRefused)
{
    for (const int unknown : {20, 34})
        expectFailedSave(unknown, refusal(Qeapp::eInvalidDrawingVersion,
                                          std::to_string(unknown) + " is not a drawing version that can be saved"));
}

TEST_F(DrawingFileSave, SaveInTheSameVersionFrom30On_DoesNotDecompose)
{
    save(30);
    Decomposer decomposer;
    save(30);
    EXPECT_EQ(decomposer.notifications, Notifications{});
}

TEST_F(DrawingFileSave, SaveInAVersionBelow30_AlwaysDecomposes)
{
    Decomposer decomposer;
    save(29);
    EXPECT_EQ(decomposer.notifications, (Notifications{"decompose 29", "completed 29"}));
}

TEST_F(DrawingFileSave, SaveInAnotherVersion_Decomposes)
{
    Decomposer decomposer;
    save(33);
    EXPECT_EQ(decomposer.notifications, (Notifications{"decompose 33", "completed 33"}));
}

TEST_F(DrawingFileSave, ObjectsMadeByAReactor_AreInTheFileAndInTheDrawing)
{
    Decomposer decomposer;
    save(33);
    EXPECT_NE(fileContents().find("entry \"DECOMPOSED\""), std::string::npos);
    EXPECT_EQ(fileContents(), drawingContents(*database));
}

TEST_F(DrawingFileSave, FailingReactor_StopsTheSave)
{
    Decomposer decomposer;
    decomposer.result = Qeapp::eNotApplicable;
    decomposer.recorded = Qeapp::eVetoed;
    decomposer.message = L"keeps its \u00E4";
    expectFailedSave(30, std::to_string(Qeapp::eVetoed) + " keeps its \xC3\xA4");
    EXPECT_EQ(decomposer.notifications, (Notifications{"decompose 30", "aborted 30"}));
}

TEST_F(DrawingFileSave, RecordedError_StopsTheSaveThoughTheReactorReturnsOk)
{
    Decomposer decomposer;
    decomposer.recorded = Qeapp::eInvalidInput;
    expectFailedSave(30, std::to_string(Qeapp::eInvalidInput) +
                             " the drawing's contents cannot be converted for drawing version 30 (status 3)");
}

TEST_F(DrawingFileSave, LockedFile_UndoesTheDecomposition)
{
    database = loadFile(DrawingAccess::sharing);
    const Database changing = loadFile(DrawingAccess::changing);
    Decomposer decomposer;
    expectFailedSave(30, lockedRefusal());
    EXPECT_EQ(decomposer.notifications, (Notifications{"decompose 30", "aborted 30"}));
}

TEST_F(DrawingFileSave, FailureOfAnyCall_LeavesTheOldFileAndDrawingOrTheNewOnes)
{
    const std::string old = readFile(file);
    FaultInjection::watch();
    save(30);
    const std::size_t calls = FaultInjection::seen().size();
    FaultInjection::disarm();
    ASSERT_GE(calls, 1U);
    for (std::size_t call = 1; call <= calls; ++call) {
        database.reset();
        writeFile(file, old);
        database = loadFile(DrawingAccess::changing);
        const ScopedFault fault({.call = "", .occurrence = call, .code = {}});
        const bool saved = tryToSave(30).has_value();
        EXPECT_EQ(readFile(file) == old, !saved) << call;
        EXPECT_EQ(database->drawingVersion(), saved ? 30 : 29) << call;
    }
}

TEST_F(DrawingFileSave, Copy_HasTheWholeDrawingAndLeavesTheOriginalUnchanged)
{
    const std::string bytes = readFile(file);
    EXPECT_EQ(outcome(saveDrawing(*database, copyFile(), version(30))), "0");
    EXPECT_TRUE(readFile(file) == bytes);
    Database copy;
    EXPECT_EQ(outcome(load(copyFile(), copy)), "0");
    EXPECT_EQ(drawingContents(*copy), drawingContents(*database));
    EXPECT_EQ(copy->drawingVersion(), 30);
}

TEST_F(DrawingFileSave, CopyOverAnotherDrawing_NeedsPermissionToOverwrite)
{
    QeDbDatabase empty;
    EXPECT_EQ(outcome(saveDrawing(empty, copyFile(), version(33))), "0");
    EXPECT_EQ(outcome(saveDrawing(*database, copyFile(), version(29))),
              refusal(copyFile(), Qeapp::eFileExists, "the file exists already"));
    EXPECT_EQ(outcome(saveDrawing(*database, copyFile(), version(29), Overwriting::drawings)), "0");
    EXPECT_EQ(contentsOfFile(copyFile()), before);
    EXPECT_EQ(folder.names(), (std::set<std::string>{"a.qedb", "b.qedb"}));
}

TEST_F(DrawingFileSave, CopyOverAFileThatIsNotADrawing_IsRefused)
{
    const std::string text = "what was there before, which is not a drawing";
    writeFile(copyFile(), text);
    EXPECT_EQ(outcome(saveDrawing(*database, copyFile(), version(29), Overwriting::drawings)),
              refusal(copyFile(), Qeapp::eFileDamaged,
                      "not a drawing file: it is not an SQLite database; only drawings are overwritten"));
    EXPECT_TRUE(readFile(copyFile()) == text);
}

TEST_F(DrawingFileSave, CopyOverAFileThatIsNotADatabase_ReplacesItOnRequest)
{
    writeFile(copyFile(), "what was there before, which is not a database");
    EXPECT_EQ(outcome(saveDrawing(*database, copyFile(), version(29), Overwriting::noDatabase)), "0");
    EXPECT_EQ(contentsOfFile(copyFile()), before);
    EXPECT_EQ(folder.names(), (std::set<std::string>{"a.qedb", "b.qedb"}));
}

TEST_F(DrawingFileSave, CopyOverADrawingOpenForReading_IsRefused)
{
    QeDbDatabase empty;
    EXPECT_EQ(outcome(saveDrawing(empty, copyFile(), version(33))), "0");
    const std::string bytes = readFile(copyFile());
    Database reading;
    EXPECT_EQ(outcome(load(copyFile(), reading, DrawingAccess::reading)), "0");
    EXPECT_EQ(outcome(saveDrawing(*database, copyFile(), version(29), Overwriting::drawings, lockWait(0))),
              refusal(copyFile(), Qeapp::eFileLocked, kLocked));
    EXPECT_TRUE(readFile(copyFile()) == bytes);
}

TEST_F(DrawingFileSave, EmptyFile_CountsAsMissing)
{
    writeFile(copyFile(), "");
    EXPECT_EQ(outcome(saveDrawing(*database, copyFile(), version(29))), "0");
    EXPECT_EQ(contentsOfFile(copyFile()), before);
    writeFile(folder.path() / "c.qedb", "");
    QeDbDatabase empty;
    EXPECT_EQ(outcome(saveDrawing(empty, folder.path() / "c.qedb", version(33))), "0");
}

TEST_F(DrawingFileSave, SaveToAMissingFolder_IsRefused)
{
    const auto missing = folder.path() / "missing" / "a.qedb";
    // The message of the system follows.
    const std::string expected = refusal(missing, Qeapp::eFileWriteFailed, "cannot be written: ");
    QeDbDatabase empty;
    for (QeDbDatabase* each : {database.get(), &empty})
        EXPECT_TRUE(outcome(saveDrawing(*each, missing, each->drawingVersion())).starts_with(expected));
    EXPECT_EQ(drawingContents(*database), before);
}

TEST_F(DrawingFileSave, SaveOverAFolder_IsRefused)
{
    EXPECT_EQ(outcome(saveDrawing(*database, folder.path(), version(29), Overwriting::drawings)),
              refusal(folder.path(), Qeapp::eFileWriteFailed, "is a folder"));
}

TEST_F(DrawingFileSave, DrawingLoadedFromMemory_HasNoFile)
{
    const Database copy = loadFromBytes(saveToBytes(*database));
    EXPECT_EQ(drawingContents(*copy), before);
    EXPECT_EQ(outcome(saveDrawing(*copy, file, version(29))), refusal(Qeapp::eFileExists, "the file exists already"));
    EXPECT_EQ(outcome(saveDrawing(*copy, copyFile(), version(29))), "0");
}

TEST_F(DrawingFileSave, DrawingInMemory_HasTheSameFormatAsAFile)
{
    const Database copy = loadFromBytes(readFile(file));
    EXPECT_EQ(drawingContents(*copy), before);
    EXPECT_EQ(
        outcome(Embedded::saveDrawingToBytes(*copy, version(34))),
        refusal("standard output", Qeapp::eInvalidDrawingVersion, "34 is not a drawing version that can be saved"));
    writeFile(copyFile(), saveToBytes(*copy));
    Database again;
    EXPECT_EQ(outcome(load(copyFile(), again, DrawingAccess::changing)), "0");
    EXPECT_EQ(drawingContents(*again), before);
}

TEST_F(DrawingFileSave, BytesThatAreNotADrawing_AreRefused)
{
    for (const std::string& bytes : {std::string(), std::string("x"), std::string(5'000, 'x')}) {
        EXPECT_EQ(
            outcome(Embedded::loadDrawingFromBytes(bytes)),
            refusal("standard input", Qeapp::eFileDamaged,
                    bytes.empty() ? "is empty, not a drawing" : "not a drawing file: it is not an SQLite database"));
    }
}

TEST_F(DrawingFileSave, DrawingWithoutFreeHandles_IsNotSaved)
{
    database.reset();
    changeBySql(file, "UPDATE header SET value = 9223372036854775807 WHERE field = 'next handle'");
    Drawing drawing(loadFile(DrawingAccess::changing));
    drawing.withXrecord({}, L"last");
    const std::string bytes = readFile(file);
    EXPECT_EQ(outcome(saveDrawing(*drawing.database(), file, version(30))),
              refusal(Qeapp::eInvalidInput, "has no more handles for new objects"));
    EXPECT_TRUE(readFile(file) == bytes);
}

} // namespace
} // namespace Tests
