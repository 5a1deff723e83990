#include "catalog/saved_drawing.h"

#include <stdexcept>

#include "embedded/host/drawing_file/drawing_file.h"

namespace Tests {

std::optional<std::string> savedText(const Drawing& drawing, int version)
{
    const auto wanted = static_cast<QeDb::QeDbDwgVersion>(version);
    Embedded::Expected<std::string> saved = Embedded::saveDrawingToBytes(*drawing.database(), wanted);
    return saved ? std::optional(std::move(*saved)) : std::nullopt;
}

Drawing openedDrawing(const std::string& bytes)
{
    return Drawing(loadFromBytes(bytes));
}

} // namespace Tests
