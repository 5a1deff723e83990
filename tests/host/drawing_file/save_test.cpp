// The host's save: what is in the file and in the open drawing afterwards, whatever the reactors and the disk did.
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

/// Adds a key to the named objects dictionary, and fails if it is told to.
class Decomposer final : public QeDbDecompositionReactor {
public:
    Decomposer() { EXPECT_EQ(qedbGetDecompositionManager()->addReactor(this), Qeapp::eOk); }
    ~Decomposer() { EXPECT_EQ(qedbGetDecompositionManager()->removeReactor(this), Qeapp::eOk); }

    Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database, QeDb::QeDbDwgVersion target,
                                        QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages) override
    {
        told.push_back("decompose " + std::to_string(target));
        addRecord(*database);
        if (recorded) {
            const Qeapp::ErrorStatus taken =
                message.empty() ? errors->recordError(*recorded) : messages->recordError(*recorded, message.c_str());
            EXPECT_EQ(taken, Qeapp::eOk);
        }
        return result;
    }
    void saveCompleted(QeDbDatabase* database, QeDb::QeDbDwgVersion target) override
    {
        told.push_back("completed " + std::to_string(target));
        EXPECT_EQ(database->drawingVersion(), target);
    }
    void saveAborted(QeDbDatabase*, QeDb::QeDbDwgVersion target) override
    {
        told.push_back("aborted " + std::to_string(target));
    }

    std::vector<std::string> told;
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
    using Told = std::vector<std::string>;

    DrawingFileSave()
    {
        given(GivenDrawing(version(29)).withLegacyCode(L"EPSG:25832").withXrecord({{300, L"text"}}, L"key"));
        database = loaded(DrawingAccess::changing);
        before = drawingContents(*database);
    }
    Expected<void> tryToSave(int target) const
    {
        return saveDrawing(*database, file, version(target), Overwriting::refused, waitOf(0));
    }
    void save(int target) { EXPECT_EQ(outcome(tryToSave(target)), "0"); }
    /// The save comes to that, and neither file nor drawing tells that it was tried.
    void expectNothingSaved(int target, Qeapp::ErrorStatus status, const std::string& message)
    {
        const std::string bytes = readFile(file);
        EXPECT_EQ(outcome(tryToSave(target)), number(status) + " " + message);
        EXPECT_EQ(drawingContents(*database), before);
        EXPECT_TRUE(readFile(file) == bytes);
        EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"});
    }
    std::string other() const { return (folder.path() / "b.qedb").string(); }

    Database database;
    std::string before;
};

TEST_F(DrawingFileSave, ANewDrawing_IsLoadedAsItWas)
{
    database = std::make_unique<QeDbDatabase>(version(33));
    std::filesystem::remove(file);
    save(33);
    EXPECT_EQ(inFile(), drawingContents(*database));
}

TEST_F(DrawingFileSave, ANewDrawing_IsNotSavedTwice)
{
    database = std::make_unique<QeDbDatabase>(version(33));
    std::filesystem::remove(file);
    save(33);
    before = drawingContents(*database);
    expectNothingSaved(33, Qeapp::eFileExists, file.string() + ": the file exists already");
}

TEST_F(DrawingFileSave, TwoNewDrawings_HoldTheSameBytes)
{
    QeDbDatabase first;
    QeDbDatabase second;
    EXPECT_TRUE(saveToBytes(first) == saveToBytes(second));
    database.reset();
    std::filesystem::remove(file);
    EXPECT_EQ(outcome(saveDrawing(first, file, version(33))), "0");
    EXPECT_EQ(outcome(saveDrawing(second, other(), version(33))), "0");
    EXPECT_TRUE(readFile(file) == readFile(other()));
}

TEST_F(DrawingFileSave, AnotherVersion_IsTheDrawingsFromThenOn)
{
    save(33);
    EXPECT_EQ(database->drawingVersion(), 33);
    EXPECT_EQ(inFile(), drawingContents(*database));
    EXPECT_EQ(loaded()->drawingVersion(), 33);
}

TEST_F(DrawingFileSave, VersionsThatAreNone_AreRefused)
{
    for (const int none : {20, 34})
        expectNothingSaved(none, Qeapp::eInvalidDrawingVersion,
                           file.string() + ": " + std::to_string(none) + " is not a drawing version that can be saved");
}

TEST_F(DrawingFileSave, AVersionFrom30ThatTheDrawingHas_NeedsNoDecomposition)
{
    save(30);
    Decomposer decomposer;
    save(30);
    EXPECT_EQ(decomposer.told, Told{});
}

TEST_F(DrawingFileSave, AVersionBelow30_IsAlwaysDecomposedFor)
{
    Decomposer decomposer;
    save(29);
    EXPECT_EQ(decomposer.told, (Told{"decompose 29", "completed 29"}));
}

TEST_F(DrawingFileSave, AnotherVersion_IsDecomposedFor)
{
    Decomposer decomposer;
    save(33);
    EXPECT_EQ(decomposer.told, (Told{"decompose 33", "completed 33"}));
}

TEST_F(DrawingFileSave, WhatTheReactorsMade_IsInTheFileAndInTheDrawing)
{
    Decomposer decomposer;
    save(33);
    EXPECT_NE(inFile().find("entry \"DECOMPOSED\""), std::string::npos);
    EXPECT_EQ(inFile(), drawingContents(*database));
}

TEST_F(DrawingFileSave, AReactorThatFails_EndsTheSave)
{
    Decomposer decomposer;
    decomposer.result = Qeapp::eNotApplicable;
    decomposer.recorded = Qeapp::eVetoed;
    decomposer.message = L"keeps its \u00E4";
    expectNothingSaved(30, Qeapp::eVetoed, "keeps its \xC3\xA4");
    EXPECT_EQ(decomposer.told, (Told{"decompose 30", "aborted 30"}));
}

TEST_F(DrawingFileSave, ARecordedCode_EndsTheSaveThoughTheReactorReturnsOk)
{
    Decomposer decomposer;
    decomposer.recorded = Qeapp::eInvalidInput;
    expectNothingSaved(30, Qeapp::eInvalidInput,
                       "the drawing's contents cannot be converted for drawing version 30 (status 3)");
}

TEST_F(DrawingFileSave, AFileThatCannotBeLocked_UndoesTheDecomposition)
{
    database = loaded(DrawingAccess::sharing);
    const Database changing = loaded(DrawingAccess::changing);
    Decomposer decomposer;
    expectNothingSaved(30, Qeapp::eFileLocked,
                       file.string() + ": another process is using it and did not release it in time");
    EXPECT_EQ(decomposer.told, (Told{"decompose 30", "aborted 30"}));
}

TEST_F(DrawingFileSave, AFailureAnywhere_LeavesOldFileAndDrawingOrTheNewOnes)
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
        database = loaded(DrawingAccess::changing);
        const ScopedFault fault({.call = "", .occurrence = call, .code = {}});
        const bool saved = tryToSave(30).has_value();
        EXPECT_EQ(readFile(file) == old, !saved) << call;
        EXPECT_EQ(database->drawingVersion(), saved ? 30 : 29) << call;
    }
}

TEST_F(DrawingFileSave, ACopy_IsTheWholeDrawingAndLeavesTheFirstAlone)
{
    const std::string bytes = readFile(file);
    EXPECT_EQ(outcome(saveDrawing(*database, other(), version(30))), "0");
    EXPECT_TRUE(readFile(file) == bytes);
    Database copy;
    EXPECT_EQ(outcome(load(other(), copy)), "0");
    EXPECT_EQ(drawingContents(*copy), drawingContents(*database));
    EXPECT_EQ(copy->drawingVersion(), 30);
}

TEST_F(DrawingFileSave, ACopyOverAnotherDrawing_NeedsToBeAllowed)
{
    QeDbDatabase empty;
    EXPECT_EQ(outcome(saveDrawing(empty, other(), version(33))), "0");
    EXPECT_EQ(outcome(saveDrawing(*database, other(), version(29))),
              number(Qeapp::eFileExists) + " " + other() + ": the file exists already");
    EXPECT_EQ(outcome(saveDrawing(*database, other(), version(29), Overwriting::drawings)), "0");
    Database copy;
    EXPECT_EQ(outcome(load(other(), copy)), "0");
    EXPECT_EQ(drawingContents(*copy), before);
    EXPECT_EQ(folder.names(), (std::set<std::string>{"a.qedb", "b.qedb"}));
}

TEST_F(DrawingFileSave, ACopyOverWhatIsNoDrawing_IsRefused)
{
    const std::string text = "what was there before, which is no drawing";
    writeFile(other(), text);
    EXPECT_EQ(outcome(saveDrawing(*database, other(), version(29), Overwriting::drawings)),
              number(Qeapp::eFileDamaged) + " " + other() +
                  ": not a drawing file: it is not an SQLite database; only drawings are overwritten");
    EXPECT_TRUE(readFile(other()) == text);
}

TEST_F(DrawingFileSave, ACopyOverWhatIsNoDatabase_ReplacesItWhereThatIsWanted)
{
    writeFile(other(), "what was there before, which is no database");
    EXPECT_EQ(outcome(saveDrawing(*database, other(), version(29), Overwriting::noDatabase)), "0");
    Database copy;
    EXPECT_EQ(outcome(load(other(), copy)), "0");
    EXPECT_EQ(drawingContents(*copy), before);
    EXPECT_EQ(folder.names(), (std::set<std::string>{"a.qedb", "b.qedb"}));
}

TEST_F(DrawingFileSave, ACopyOverADrawingThatIsRead_WaitsAndGivesUp)
{
    QeDbDatabase empty;
    EXPECT_EQ(outcome(saveDrawing(empty, other(), version(33))), "0");
    const std::string bytes = readFile(other());
    Database reading;
    EXPECT_EQ(outcome(load(other(), reading, DrawingAccess::reading)), "0");
    EXPECT_EQ(outcome(saveDrawing(*database, other(), version(29), Overwriting::drawings, waitOf(0))),
              number(Qeapp::eFileLocked) + " " + other() +
                  ": another process is using it and did not release it in time");
    EXPECT_TRUE(readFile(other()) == bytes);
}

TEST_F(DrawingFileSave, AFileOfNoBytes_CountsAsAbsent)
{
    writeFile(other(), "");
    EXPECT_EQ(outcome(saveDrawing(*database, other(), version(29))), "0");
    Database copy;
    EXPECT_EQ(outcome(load(other(), copy)), "0");
    writeFile(folder.path() / "c.qedb", "");
    QeDbDatabase empty;
    EXPECT_EQ(outcome(saveDrawing(empty, folder.path() / "c.qedb", version(33))), "0");
}

TEST_F(DrawingFileSave, APlaceThatCannotBeWrittenTo_IsRefused)
{
    // The system's own words follow.
    const auto missing = folder.path() / "missing" / "a.qedb";
    const std::string expected = number(Qeapp::eFileWriteFailed) + " " + missing.string() + ": cannot be written: ";
    QeDbDatabase empty;
    for (QeDbDatabase* each : {database.get(), &empty})
        EXPECT_TRUE(outcome(saveDrawing(*each, missing, each->drawingVersion())).starts_with(expected));
    EXPECT_EQ(drawingContents(*database), before);
}

TEST_F(DrawingFileSave, AFolderInThePlaceOfTheFile_IsRefused)
{
    EXPECT_EQ(outcome(saveDrawing(*database, folder.path(), version(29), Overwriting::drawings)),
              number(Qeapp::eFileWriteFailed) + " " + folder.path().string() + ": is a folder");
}

TEST_F(DrawingFileSave, ADrawingFromMemory_HasNoFileOfItsOwn)
{
    const Database copy = loadFromBytes(saveToBytes(*database));
    EXPECT_EQ(drawingContents(*copy), before);
    EXPECT_EQ(outcome(saveDrawing(*copy, file, version(29))),
              number(Qeapp::eFileExists) + " " + file.string() + ": the file exists already");
    EXPECT_EQ(outcome(saveDrawing(*copy, other(), version(29))), "0");
}

TEST_F(DrawingFileSave, InMemory_IsTheSameDatabaseAsInAFile)
{
    const Database copy = loadFromBytes(readFile(file));
    EXPECT_EQ(drawingContents(*copy), before);
    EXPECT_EQ(outcome(Embedded::saveDrawingToBytes(*copy, version(34))),
              number(Qeapp::eInvalidDrawingVersion) +
                  " standard output: 34 is not a drawing version that can be saved");
    writeFile(other(), saveToBytes(*copy));
    Database again;
    EXPECT_EQ(outcome(load(other(), again, DrawingAccess::changing)), "0");
    EXPECT_EQ(drawingContents(*again), before);
}

TEST_F(DrawingFileSave, BytesThatAreNoDrawing_AreRefused)
{
    for (const std::string& bytes : {std::string(), std::string("x"), std::string(5'000, 'x')}) {
        EXPECT_EQ(outcome(Embedded::loadDrawingFromBytes(bytes)),
                  number(Qeapp::eFileDamaged) + " standard input: " +
                      (bytes.empty() ? "is empty, not a drawing" : "not a drawing file: it is not an SQLite database"));
    }
}

TEST_F(DrawingFileSave, TheLastHandle_IsNotFollowedByAnother)
{
    database.reset();
    changeBySql(file, "UPDATE header SET value = 9223372036854775807 WHERE field = 'next handle'");
    Drawing drawing(loaded(DrawingAccess::changing));
    drawing.withXrecord({}, L"last");
    const std::string bytes = readFile(file);
    EXPECT_EQ(outcome(saveDrawing(*drawing.database(), file, version(30))),
              refusal(Qeapp::eInvalidInput, "has no more handles for new objects"));
    EXPECT_TRUE(readFile(file) == bytes);
}

} // namespace
} // namespace Tests
