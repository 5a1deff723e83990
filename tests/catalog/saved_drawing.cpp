#include "catalog/saved_drawing.h"

#include <stdexcept>

#include "embedded/host/drawing_file.h"

namespace Tests {

std::optional<std::string> savedText(const Drawing& drawing, int version)
{
    std::optional<std::string> text;
    const Embedded::FileResult saved = Embedded::saveDrawing(
        *drawing.database(), static_cast<QeDb::QeDbDwgVersion>(version), [&](std::string_view whole) {
            text = whole;
            return Embedded::FileResult();
        });
    if (saved.status != Qeapp::eOk && text)
        throw std::runtime_error("a save that failed has written: " + saved.message);
    return text;
}

Drawing openedDrawing(const std::string& text)
{
    Embedded::DrawingImage image;
    const Embedded::FileResult read = Embedded::drawingImageFrom(text, image);
    if (read.status != Qeapp::eOk)
        throw std::runtime_error(read.message);
    return Drawing(Embedded::databaseFrom(image));
}

} // namespace Tests
