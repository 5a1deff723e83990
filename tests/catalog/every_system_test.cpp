// Every live projected and geographic system of the catalog, through a drawing file and through the definition xrecord.
#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <set>
#include <string>
#include <tuple>

#include "catalog/catalog_codes.h"
#include "coordsys/orvel_coordinate_system.h"
#include "embedded/foundation/text.h"
#include "embedded/host/drawing_file.h"
#include "storage/definition_xrecord.h"
#include "storage/library_holder.h"
#include "support/drawing.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace {

namespace Module = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Orvel::Library;
using Definition = Library::CoordinateReferenceSystemDefinition;
using DefinitionHolder = Orvel::LibraryObject<Definition>;

constexpr std::size_t kLargestStream = 1024;

std::wstring text(const Definition& definition, Library::Status (Definition::*query)(const wchar_t*&) const)
{
    const wchar_t* answer = nullptr;
    return (definition.*query)(answer) == Library::statusOk ? answer : L"(failed)";
}

std::wstring wktOf(const Definition& definition)
{
    std::array<wchar_t, 4096> wkt{};
    const Library::Status status =
        Library::FormatConverter::DefinitionToWkt_s(&definition, Library::wktFlavorDefault, wkt.data(), wkt.size());
    return std::to_wstring(static_cast<int>(status)) + L' ' + wkt.data();
}

/// What has to come back the same: code, name, kind, datum code, ellipsoid code, WKT with its status.
using Facts = std::tuple<std::wstring, std::wstring, int, std::wstring, std::wstring, std::wstring>;

Facts factsOf(const Definition& definition)
{
    int kind = 0;
    EXPECT_EQ(definition.GetKind(kind), Library::statusOk);
    return {text(definition, &Definition::GetCode),
            text(definition, &Definition::GetName),
            kind,
            text(definition, &Definition::GetDatumCode),
            text(definition, &Definition::GetEllipsoidCode),
            wktOf(definition)};
}

std::size_t streamLengthOf(const Definition& definition)
{
    Orvel::LibraryObject<Library::DefinitionStream> stream;
    EXPECT_EQ(Library::DefinitionStream::CreateInstance(stream.put()), Library::statusOk);
    EXPECT_EQ(stream->Add(&definition), Library::statusOk);
    std::array<unsigned char, 65536> buffer{};
    std::size_t length = buffer.size();
    EXPECT_EQ(stream->Write(buffer.data(), length, Library::formatBinary, 0), Library::statusOk);
    EXPECT_EQ(buffer[0], 0);
    return length;
}

class EverySystem : public Tests::PlatformTest, public testing::WithParamInterface<std::size_t> {
protected:
    static constexpr std::size_t kParts = 2;
    /// How many systems there are for each one that is taken.
    static constexpr std::size_t kStride = ORVEL_CATALOG_STRIDE;

    /// This part's codes: every second one, so that two processes can share the work.
    std::vector<std::wstring> codes() const
    {
        std::vector<std::wstring> mine;
        for (std::size_t index = GetParam() * kStride; index < all_.size(); index += kParts * kStride)
            mine.push_back(all_[index]);
        return mine;
    }

    void report(std::size_t count, const char* from) const
    {
        const std::set<std::wstring> distinct(all_.begin(), all_.end());
        std::cout << count << " systems came back from " << from << ", of " << all_.size()
                  << " that the catalog lists (" << distinct.size() << " distinct)\n";
    }

private:
    const std::vector<std::wstring> all_ = Tests::liveProjectedAndGeographicCodes();
};

TEST_P(EverySystem, ComesBackFromADrawingFile)
{
    const Tests::TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "drawing.qedb";
    std::size_t count = 0;
    for (const std::wstring& code : codes()) {
        SCOPED_TRACE(Embedded::utf8FromWide(code));
        DefinitionHolder original;
        ASSERT_EQ(Definition::Load(code.c_str(), original.put()), Library::statusOk);
        {
            const Tests::Drawing drawing;
            ASSERT_EQ(Module::SetCoordinateSystem(original.get(), drawing.database()), Qeapp::eOk);
            const Embedded::FileResult saved = Embedded::saveDrawing(*drawing.database(), file, QeDb::kCurrentDwg);
            ASSERT_EQ(saved.status, Qeapp::eOk) << saved.message;
        }
        std::unique_ptr<QeDbDatabase> reopened;
        const Embedded::FileResult loaded = Embedded::loadDrawing(file, reopened);
        ASSERT_EQ(loaded.status, Qeapp::eOk) << loaded.message;
        DefinitionHolder read;
        bool known = false;
        ASSERT_EQ(Module::GetCoordinateSystem(read.put(), &known, reopened.get()), Qeapp::eOk);
        ASSERT_TRUE(read);
        EXPECT_TRUE(known);
        ASSERT_EQ(factsOf(*read.get()), factsOf(*original.get()));
        ++count;
    }
    EXPECT_GT(count, 4000U / kStride);
    report(count, "a drawing file");
}

TEST_P(EverySystem, ComesBackFromTheDefinitionXrecord)
{
    const Tests::Drawing drawing;
    std::size_t count = 0;
    std::pair<std::size_t, std::wstring> longest;
    for (const std::wstring& code : codes()) {
        SCOPED_TRACE(Embedded::utf8FromWide(code));
        DefinitionHolder original;
        ASSERT_EQ(Definition::Load(code.c_str(), original.put()), Library::statusOk);
        ASSERT_EQ(Orvel::WriteCsDefinitionXrecord(original.get(), drawing.database()), Qeapp::eOk);
        Orvel::DefinitionSet stored;
        ASSERT_TRUE(Orvel::ReadCsDefinitionXrecord(drawing.database(), code.c_str(), stored));
        ASSERT_EQ(factsOf(*stored.system.get()), factsOf(*original.get()));
        EXPECT_TRUE(stored.ellipsoid);
        EXPECT_EQ(static_cast<bool>(stored.datum), !text(*original.get(), &Definition::GetDatumCode).empty());
        longest = std::max(longest, {streamLengthOf(*original.get()), code});
        ++count;
    }
    EXPECT_LE(longest.first, kLargestStream);
    report(count, "the definition xrecord");
    std::cout << "the longest stream among them is " << longest.first << " bytes ("
              << Embedded::utf8FromWide(longest.second) << ")\n";
}

INSTANTIATE_TEST_SUITE_P(Half, EverySystem, testing::Values(0U, 1U));

} // namespace
