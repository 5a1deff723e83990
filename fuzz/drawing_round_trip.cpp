#include "fuzz/drawing_round_trip.h"

#include <unordered_set>

#include "embedded/host/drawing_file.h"
#include "fuzz/oracle.h"

namespace Fuzz {

SavedDrawing savedDrawing(QeDbDatabase& database, QeDb::QeDbDwgVersion version)
{
    SavedDrawing saved;
    saved.status = Embedded::saveDrawing(database, version, [&](std::string_view text) {
                       saved.text = text;
                       return Embedded::FileResult();
                   }).status;
    return saved;
}

std::unique_ptr<QeDbDatabase> loadedDrawing(const std::string& text)
{
    Embedded::DrawingImage image;
    const Embedded::FileResult result = Embedded::drawingImageFrom(text, image);
    if (result.status == Qeapp::eOk)
        return Embedded::databaseFrom(image);
    require(result.status == Qeapp::eFileDamaged || result.status == Qeapp::eFileTooNew,
            "a text that is no drawing is damaged or too new");
    require(!result.message.empty(), "a refusal says why");
    return nullptr;
}

void requireSameWhenLoaded(const std::string& text)
{
    constexpr std::size_t kMostRemembered = 10'000;
    static std::unordered_set<std::string> remembered; // sessions save the same drawings again and again
    if (remembered.contains(text))
        return;
    const std::unique_ptr<QeDbDatabase> database = loadedDrawing(text);
    require(database != nullptr, "what was saved can be loaded");
    require(Embedded::drawingTextFrom(Embedded::imageOf(*database)) == text,
            "a drawing that was loaded is the same file");
    if (remembered.size() == kMostRemembered)
        remembered.clear();
    remembered.insert(text);
}

} // namespace Fuzz
