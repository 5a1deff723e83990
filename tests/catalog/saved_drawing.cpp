#include "catalog/saved_drawing.h"

#include <stdexcept>

#include "embedded/host/drawing_file/drawing_file.h"

namespace Tests {

std::optional<std::string> savedText(const Drawing& drawing, int version)
{
    std::string bytes;
    const auto wanted = static_cast<QeDb::QeDbDwgVersion>(version);
    const Embedded::FileResult saved = Embedded::saveDrawingToBytes(*drawing.database(), wanted, bytes);
    if (saved.status != Qeapp::eOk && !bytes.empty())
        throw std::runtime_error("a save that failed has written: " + saved.message);
    return saved.status == Qeapp::eOk ? std::optional(bytes) : std::nullopt;
}

Drawing openedDrawing(const std::string& bytes)
{
    return Drawing(loadedFromMemory(bytes));
}

} // namespace Tests
