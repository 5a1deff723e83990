#include <iterator>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "module/module_test.h"
#include "support/drawing.h"
#include "support/file_text.h"
#include "support/library_definitions.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

using Embedded::Expected;
using Embedded::hostStatus;
using Embedded::ScopedFault;

/// Saves drawings to files while the module, which converts them, is loaded.
class ConvertingSave : public ModuleTest {
protected:
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "drawing.qedb";
    Drawing drawing;
    const std::wstring text = serializedText(catalogSystem(L"EPSG:25832").get());

    void SetUp() override
    {
        load();
        drawing.withGeoData(text);
    }

    static Expected<void> save(const Drawing& saved, const std::filesystem::path& target, int version)
    {
        return Embedded::saveDrawing(*saved.database(), target, static_cast<QeDb::QeDbDwgVersion>(version),
                                     Embedded::Overwriting::drawings);
    }
    Expected<void> save(int version) const { return save(drawing, file, version); }
    void saveOrFail(int version) const
    {
        const Expected<void> result = save(version);
        ASSERT_TRUE(result) << result.error().text();
    }
    std::string fileContents() const { return std::filesystem::exists(file) ? readFile(file) : std::string(); }
    std::size_t countFiles() const
    {
        const std::filesystem::directory_iterator files(folder.path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    static void expectLegacyForms(const Drawing& converted)
    {
        EXPECT_EQ(converted.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, L"EPSG:25832"}}));
        ASSERT_TRUE(converted.xrecord().has_value());
        EXPECT_EQ(converted.xrecord()->front(), (Item{1071, 1}));
        EXPECT_TRUE(converted.geoDataText().value_or(L"").starts_with(L"PROJCS["));
    }
    void expectCurrentForm(const Drawing& converted) const
    {
        EXPECT_EQ(converted.geoDataText(), text);
        EXPECT_EQ(converted.legacyChain(), std::nullopt);
        EXPECT_EQ(converted.xrecord(), std::nullopt);
    }
    /// Saves while a call fails. Expects its result, an unchanged drawing and unchanged files.
    void expectNothingSaved(const ScopedFault&, int expected)
    {
        const std::string before = drawing.contents();
        const std::string contents = fileContents();
        const std::size_t files = countFiles();
        const Expected<void> result = save(29);
        ASSERT_EQ(hostStatus(result), expected);
        EXPECT_NE(result.error().message, "");
        EXPECT_GT(Embedded::FaultInjection::failedCalls(), 0U);
        EXPECT_EQ(drawing.contents(), before);
        EXPECT_EQ(fileContents(), contents);
        EXPECT_EQ(countFiles(), files);
    }
};

/// Loads a file without the module.
class SavedDrawing : public ConvertingSave {
protected:
    std::unique_ptr<QeDbDatabase> loaded;

    void reload()
    {
        loaded.reset();
        auto result = Embedded::loadDrawing(file);
        ASSERT_TRUE(result) << result.error().text();
        loaded = std::move(*result);
    }
};

TEST_F(ConvertingSave, ReturnToVersion29_GetsTheLegacyForms)
{
    saveOrFail(29);
    saveOrFail(33);
    saveOrFail(29);
    expectLegacyForms(drawing);
    EXPECT_EQ(drawing.database()->drawingVersion(), 29);
}

TEST_F(ConvertingSave, EveryOlderVersion_GetsTheLegacyForms)
{
    for (int version = 21; version < 30; ++version) {
        SCOPED_TRACE(version);
        saveOrFail(version);
        expectLegacyForms(drawing);
    }
}

TEST_F(ConvertingSave, EveryNewerVersion_GetsTheGeoDataText)
{
    for (int version = 30; version <= 33; ++version) {
        SCOPED_TRACE(version);
        saveOrFail(29);
        saveOrFail(version);
        expectCurrentForm(drawing);
    }
}

TEST_F(SavedDrawing, FileOfVersion29_HoldsTheConvertedDrawing)
{
    saveOrFail(29);
    reload();
    EXPECT_EQ(drawingContents(*loaded), drawing.contents());
    EXPECT_EQ(loaded->drawingVersion(), 29);
}

TEST_F(SavedDrawing, FileOfVersion29_IsConvertedBackAfterLoading)
{
    saveOrFail(29);
    reload();
    ASSERT_TRUE(Embedded::saveDrawing(*loaded, file, QeDb::kCurrentDwg));
    reload();
    ASSERT_TRUE(save(drawing, folder.path() / "other.qedb", 33));
    EXPECT_EQ(drawingContents(*loaded), drawing.contents());
    expectCurrentForm(drawing);
}

TEST_F(ConvertingSave, DrawingWithoutASystem_IsSavedAtAnyVersion)
{
    const Drawing empty;
    for (int version = 21; version <= 33; ++version)
        EXPECT_EQ(hostStatus(save(empty, file, version)), Qeapp::eOk) << version;
    EXPECT_EQ(empty.geoDataText(), std::nullopt);
    EXPECT_EQ(empty.legacyChain(), std::nullopt);
}

TEST_F(ConvertingSave, WithoutTheModule_NothingIsConverted)
{
    unload();
    saveOrFail(29);
    expectCurrentForm(drawing);
}

TEST_F(ConvertingSave, FailingConversion_LeavesTheDrawingAndTheFileUnchanged)
{
    saveOrFail(33);
    for (const char* const call : {"QeDbGeoData::setCoordinateSystem", "QeDbDictionary::setAt", "QeDbObject::setXData",
                                   "QeDbXrecord::setFromRbChain", "qedbOpenQeDbObject"}) {
        SCOPED_TRACE(call);
        expectNothingSaved(ScopedFault({.call = call, .code = 999}), 999);
    }
}

TEST_F(ConvertingSave, ConversionThatFailsAfterAChange_LeavesTheDrawingAndTheFileUnchanged)
{
    saveOrFail(33);
    expectNothingSaved(ScopedFault({.call = "QeDbObject::setXData", .occurrence = 2, .code = 999}), 999);
}

TEST_F(ConvertingSave, FailingConversion_WritesNoNewFile)
{
    expectNothingSaved(ScopedFault({.call = "QeDbXrecord::setFromRbChain", .code = 999}), 999);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(ConvertingSave, SystemThatCannotBeRead_IsNotSavedInAnOlderVersion)
{
    saveOrFail(33);
    expectNothingSaved(ScopedFault({.call = "DefinitionStream::Deserialize_s", .code = 43}), 3);
}

TEST_F(ConvertingSave, SystemWithADotAsCode_IsNotSavedInAnOlderVersion)
{
    Drawing unnamed;
    unnamed.withGeoData(serializedText(userSystem(L".").get()));
    ASSERT_TRUE(save(unnamed, file, 33));
    const std::string before = unnamed.contents();
    const std::string contents = fileContents();
    EXPECT_EQ(hostStatus(save(unnamed, file, 29)), 3);
    EXPECT_EQ(unnamed.contents(), before);
    EXPECT_EQ(fileContents(), contents);
}

TEST_F(ConvertingSave, FolderInPlaceOfTheFile_LeavesTheDrawingUnchanged)
{
    std::filesystem::create_directory(file);
    const std::string before = drawing.contents();
    EXPECT_EQ(hostStatus(save(29)), Qeapp::eFileWriteFailed);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_TRUE(std::filesystem::is_directory(file));
    EXPECT_EQ(countFiles(), 1U);
}

TEST_F(ConvertingSave, MissingFolder_LeavesTheDrawingUnchanged)
{
    file = folder.path() / "missing" / "drawing.qedb";
    const std::string before = drawing.contents();
    EXPECT_EQ(hostStatus(save(29)), Qeapp::eFileWriteFailed);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(ConvertingSave, SaveAfterAFailedSave_Converts)
{
    expectNothingSaved(ScopedFault({.call = "QeDbDictionary::setAt", .code = 999}), 999);
    saveOrFail(29);
    expectLegacyForms(drawing);
}

} // namespace
} // namespace Tests
