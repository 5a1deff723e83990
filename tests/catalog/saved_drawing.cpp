#include "catalog/saved_drawing.h"

#include <stdexcept>

#include "embedded/host/drawing_file/drawing_file.h"

namespace Tests {

std::optional<std::string> saveToMemory(const Drawing& drawing, int version)
{
    const auto target = static_cast<QeDb::QeDbDwgVersion>(version);
    Embedded::Expected<std::string> saved = Embedded::saveDrawingToBytes(*drawing.database(), target);
    return saved ? std::optional(std::move(*saved)) : std::nullopt;
}

Drawing loadDrawing(const std::string& bytes)
{
    return Drawing(loadFromBytes(bytes));
}

} // namespace Tests
