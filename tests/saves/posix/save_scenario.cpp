#include "saves/posix/save_scenario.h"

#include "embedded/host/drawing_file.h"
#include "support/drawing.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

fs::path drawingIn(const fs::path& folder)
{
    return folder / "a.qedb";
}

bool saveDrawingWith(const fs::path& folder, const std::wstring& text)
{
    Drawing drawing;
    drawing.withGeoData(text).withLegacyCode(L"EPSG:25832");
    return Embedded::saveDrawing(*drawing.database(), drawingIn(folder), QeDb::kCurrentDwg).status == Qeapp::eOk;
}

void nothing(const fs::path& /*folder*/)
{
}

void olderDrawing(const fs::path& folder)
{
    static_cast<void>(saveDrawingWith(folder, std::wstring(300, L'o'))); // what is there is compared
}

void linkToOlderDrawing(const fs::path& folder)
{
    olderDrawing(folder);
    fs::rename(drawingIn(folder), folder / "real.qedb");
    fs::create_symlink("real.qedb", drawingIn(folder));
}

bool newDrawing(const fs::path& folder)
{
    return saveDrawingWith(folder, std::wstring(20'000, L'n'));
}

std::string drawingContent(const fs::path& folder)
{
    std::unique_ptr<QeDbDatabase> database;
    const Embedded::FileResult result = Embedded::loadDrawing(drawingIn(folder), database);
    if (result.status == Qeapp::eFileNotFound && !fs::exists(drawingIn(folder)))
        return {};
    return database ? Embedded::drawingTextFrom(Embedded::imageOf(*database)) : "refused: " + result.message;
}

std::string linkedContent(const fs::path& folder)
{
    return fs::is_symlink(drawingIn(folder)) ? drawingContent(folder) : "refused: not a link";
}

} // namespace

constinit const SaveScenario kNewDrawing = {"NewDrawing", nothing, newDrawing, drawingContent};
constinit const SaveScenario kReplacedDrawing = {"ReplacedDrawing", olderDrawing, newDrawing, drawingContent};
constinit const SaveScenario kLinkedDrawing = {"LinkedDrawing", linkToOlderDrawing, newDrawing, linkedContent};

} // namespace Tests
