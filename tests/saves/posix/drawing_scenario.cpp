#include "saves/posix/drawing_scenario.h"

#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "embedded/host/drawing_file/drawing_dump.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "support/drawing.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Embedded::DrawingAccess;
using Embedded::Overwriting;

constexpr int kXrecords = 5;

Embedded::LockWait noWait()
{
    Embedded::LockWait wait;
    wait.longest = wait.longest.zero();
    return wait;
}

std::wstring xrecordKey(int number)
{
    return L"key " + std::to_wstring(number);
}

void fill(Drawing& drawing, wchar_t unit, std::size_t length)
{
    for (int number = 0; number < kXrecords; ++number)
        drawing.withXrecord({{300, std::wstring(length, unit)}}, xrecordKey(number).c_str());
}

const FolderContents& emptyFolder()
{
    static const FolderContents initialContents;
    return initialContents;
}

const FolderContents& oneDrawing()
{
    static const FolderContents initialContents = [] {
        Drawing drawing;
        fill(drawing, L'o', 2'000);
        drawing.withGeoData(L"old").withLegacyCode(L"EPSG:25832");
        return FolderContents{{"a.qedb", saveToBytes(*drawing.database())}};
    }();
    return initialContents;
}

const FolderContents& twoDrawings()
{
    static const FolderContents initialContents = [] {
        Drawing drawing;
        fill(drawing, L'p', 3'000);
        FolderContents both = oneDrawing();
        both["b.qedb"] = saveToBytes(*drawing.database());
        return both;
    }();
    return initialContents;
}

/// Returns false if the work throws, as `Drawing` does when it cannot open an object.
template <class Work>
bool succeeds(Work work)
{
    try {
        return work();
    } catch (const std::runtime_error&) {
        return false;
    }
}

std::unique_ptr<QeDbDatabase> openDrawing(const fs::path& folder, DrawingAccess access)
{
    return Embedded::loadDrawing(folder / "a.qedb", access, noWait()).value_or(nullptr);
}

bool saveTo(const Drawing& drawing, const fs::path& file, Overwriting overwriting = Overwriting::refused)
{
    return Embedded::saveDrawing(*drawing.database(), file, QeDb::kCurrentDwg, overwriting, noWait()).has_value();
}

bool saveNew(const fs::path& folder)
{
    return succeeds([&] {
        Drawing drawing;
        fill(drawing, L'n', 500);
        return saveTo(drawing, folder / "a.qedb");
    });
}

/// Opens the drawing, changes it and saves it.
template <class Change>
bool saveChanged(const fs::path& folder, Change change)
{
    return succeeds([&] {
        auto database = openDrawing(folder, DrawingAccess::changing);
        if (database == nullptr)
            return false;
        Drawing drawing(std::move(database));
        change(drawing);
        return saveTo(drawing, folder / "a.qedb");
    });
}

bool changeAllOver(const fs::path& folder)
{
    return saveChanged(folder, [](Drawing& drawing) {
        fill(drawing, L'n', 2'500);
        drawing.withXrecord({{1040, 2.5}}, L"more").withLegacyCode(L"EPSG:25833");
    });
}

bool shrink(const fs::path& folder)
{
    return saveChanged(folder, [](Drawing& drawing) { fill(drawing, L's', 1); });
}

bool copyTo(const fs::path& folder, Overwriting overwriting)
{
    return succeeds([&] {
        auto database = openDrawing(folder, DrawingAccess::reading);
        if (database == nullptr)
            return false;
        Drawing drawing(std::move(database));
        drawing.withXrecord({{300, std::wstring(1'000, L'c')}}, L"copied");
        return saveTo(drawing, folder / "b.qedb", overwriting);
    });
}

bool copy(const fs::path& folder)
{
    return copyTo(folder, Overwriting::refused);
}

bool overwrite(const fs::path& folder)
{
    return copyTo(folder, Overwriting::drawings);
}

std::string readDrawing(const fs::path& file)
{
    const auto database = Embedded::loadDrawing(file, DrawingAccess::reading, noWait());
    const auto text = database ? Embedded::dumpDrawing(**database) : Embedded::failure(database.error());
    std::error_code error;
    if (fs::file_size(file, error) == 0 || error)
        return "nothing"; // a journal may have been rolled back
    return text ? *text : "refused: " + text.error().text();
}

} // namespace

std::string readDrawingsIn(const fs::path& folder)
{
    return "a: " + readDrawing(folder / "a.qedb") + "\nb: " + readDrawing(folder / "b.qedb") + "\n";
}

constinit const DrawingScenario kNewDrawing = {"NewDrawing", emptyFolder, saveNew, false, false};
constinit const DrawingScenario kChangedDrawing = {"ChangedDrawing", oneDrawing, changeAllOver, true, false};
constinit const DrawingScenario kShrunkDrawing = {"ShrunkDrawing", oneDrawing, shrink, true, false};
constinit const DrawingScenario kCopiedDrawing = {"CopiedDrawing", oneDrawing, copy, false, false};
constinit const DrawingScenario kOverwrittenDrawing = {"OverwrittenDrawing", twoDrawings, overwrite, true, true};

} // namespace Tests
