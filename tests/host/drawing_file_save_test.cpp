// The host's save: what is in the file and in the open drawing afterwards, whatever the reactors and the disk did.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawing_file_samples.h"
#include "embedded/foundation/faults.h"
#include "embedded/host/drawing_file.h"
#include "platform/host.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

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

class DrawingFileSave : public PlatformTest {
protected:
    using Told = std::vector<std::string>;

    void save(int target)
    {
        const FileResult result = saveDrawing(*database, file, version(target));
        EXPECT_EQ(result.message, "");
        EXPECT_EQ(result.status, Qeapp::eOk);
    }
    DrawingImage inFile() const
    {
        DrawingImage image;
        EXPECT_EQ(drawingImageFrom(contentsOf(file), image).message, "");
        return image;
    }
    /// The save came to the status, and neither file nor drawing tells that it was tried.
    void expectNothingSaved(int target, Qeapp::ErrorStatus status, const std::string& message)
    {
        put(file, "what was there before");
        const DrawingImage before = imageOf(*database);
        const FileResult result = saveDrawing(*database, file, version(target));
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.message, message);
        EXPECT_EQ(imageOf(*database), before);
        EXPECT_EQ(contentsOf(file), "what was there before");
        EXPECT_EQ(namesIn(folder.path()), std::set<std::string>{"a.qedb"});
    }

    TemporaryFolder folder;
    fs::path file = folder.path() / "a.qedb";
    std::unique_ptr<QeDbDatabase> database = databaseFrom(exampleImage());
};

TEST_F(DrawingFileSave, TheExample_IsSavedInTheTextOfTheFormatPage)
{
    save(29);
    EXPECT_EQ(contentsOf(file), exampleText());
}

TEST_F(DrawingFileSave, ANewDrawing_IsLoadedAsItWas)
{
    database = std::make_unique<QeDbDatabase>(version(33));
    save(33);
    std::unique_ptr<QeDbDatabase> loaded;
    ASSERT_EQ(loadDrawing(file, loaded).message, "");
    EXPECT_EQ(imageOf(*loaded), imageOf(*database));
}

TEST_F(DrawingFileSave, TwoSaves_GiveTheSameBytes)
{
    save(29);
    const std::string first = contentsOf(file);
    save(29);
    EXPECT_EQ(contentsOf(file), first);
}

TEST_F(DrawingFileSave, AnotherVersion_IsTheDrawingsFromThenOn)
{
    save(33);
    EXPECT_EQ(database->drawingVersion(), 33);
    EXPECT_EQ(inFile().drawingVersion, 33);
    EXPECT_EQ(inFile(), imageOf(*database));
}

TEST_F(DrawingFileSave, VersionsThatAreNone_AreRefused)
{
    expectNothingSaved(20, Qeapp::eInvalidDrawingVersion,
                       file.string() + ": 20 is not a drawing version that can be saved");
    expectNothingSaved(34, Qeapp::eInvalidDrawingVersion,
                       file.string() + ": 34 is not a drawing version that can be saved");
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
    EXPECT_NE(contentsOf(file).find("\"DECOMPOSED\""), std::string::npos);
    EXPECT_EQ(inFile(), imageOf(*database));
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

TEST_F(DrawingFileSave, ARecordedCode_EndsTheSaveThoughTheReactorAnswersOk)
{
    Decomposer decomposer;
    decomposer.recorded = Qeapp::eInvalidInput;
    put(file, "old");
    const FileResult result = saveDrawing(*database, file, version(30));
    EXPECT_EQ(result.status, Qeapp::eInvalidInput);
    EXPECT_NE(result.message, "");
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_EQ(imageOf(*database), exampleImage());
}

TEST_F(DrawingFileSave, ADiskThatFails_UndoesTheDecomposition)
{
    for (const std::string step : {"open", "write", "sync", "rename"}) {
        Decomposer decomposer;
        const ScopedFault fault({.call = "writeFileAtomically." + step, .code = {}});
        const std::string reason = step == "open"    ? "Permission denied"
                                   : step == "write" ? "No space left on device"
                                                     : "Input/output error";
        expectNothingSaved(30, Qeapp::eFileWriteFailed, file.string() + ": cannot be written: " + reason);
        EXPECT_EQ(decomposer.told, (Told{"decompose 30", "aborted 30"}));
    }
}

TEST_F(DrawingFileSave, AFailureAnywhere_LeavesOldFileAndDrawingOrTheNewOnes)
{
    Faults::watch();
    ASSERT_EQ(saveDrawing(*database, file, version(30)).status, Qeapp::eOk);
    const std::size_t calls = Faults::seen().size();
    Faults::disarm();
    ASSERT_GT(calls, 3U);
    for (std::size_t call = 1; call <= calls; ++call) {
        database = databaseFrom(exampleImage());
        put(file, "old");
        const ScopedFault fault({.call = "", .occurrence = call, .code = {}});
        const bool saved = saveDrawing(*database, file, version(30)).status == Qeapp::eOk;
        EXPECT_EQ(contentsOf(file) == "old", !saved) << call;
        EXPECT_EQ(database->drawingVersion(), saved ? 30 : 29) << call;
    }
}

TEST_F(DrawingFileSave, APlaceThatCannotBeWrittenTo_IsRefused)
{
    const FileResult result = saveDrawing(*database, folder.path() / "missing" / "a.qedb", version(33));
    EXPECT_EQ(result.status, Qeapp::eFileWriteFailed);
    EXPECT_EQ(result.message,
              (folder.path() / "missing" / "a.qedb").string() + ": cannot be written: No such file or directory");
    EXPECT_EQ(imageOf(*database), exampleImage());
}

TEST_F(DrawingFileSave, ToSomewhereElse_GivesTheTextOfTheFile)
{
    std::string text;
    const FileResult result = saveDrawing(*database, version(29), [&](std::string_view whole) {
        text = whole;
        return FileResult();
    });
    EXPECT_EQ(result.status, Qeapp::eOk);
    EXPECT_EQ(text, exampleText());
    EXPECT_EQ(namesIn(folder.path()), std::set<std::string>());
}

TEST_F(DrawingFileSave, ToSomewhereElse_IsUndoneWhereItCannotBeWritten)
{
    Decomposer decomposer;
    const FileResult result = saveDrawing(*database, version(33), [](std::string_view) {
        return FileResult{Qeapp::eFileWriteFailed, "no room"};
    });
    EXPECT_EQ(result.status, Qeapp::eFileWriteFailed);
    EXPECT_EQ(result.message, "no room");
    EXPECT_EQ(decomposer.told, (Told{"decompose 33", "aborted 33"}));
    EXPECT_EQ(imageOf(*database), exampleImage());
}

TEST_F(DrawingFileSave, ToSomewhereElse_NamesNoFile)
{
    bool written = false;
    const FileResult result = saveDrawing(*database, version(34), [&](std::string_view) {
        written = true;
        return FileResult();
    });
    EXPECT_EQ(result.status, Qeapp::eInvalidDrawingVersion);
    EXPECT_EQ(result.message, "34 is not a drawing version that can be saved");
    EXPECT_FALSE(written);
}

} // namespace
} // namespace Tests
