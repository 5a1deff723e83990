// What holds of every drawing: it can be saved, and its file is the same again when it was loaded.
#pragma once

#include <memory>
#include <string>

#include "platform/host/database.h"

namespace Fuzz {

/// The file's text of a save in the drawing's own version, or the failure that it was answered with.
struct SavedDrawing {
    Qeapp::ErrorStatus status = Qeapp::eOk;
    std::string text{};
};
SavedDrawing savedDrawing(QeDbDatabase& database, QeDb::QeDbDwgVersion version);

/// Null where the text is refused.
std::unique_ptr<QeDbDatabase> loadedDrawing(const std::string& text);

/// Loads a text that was saved and writes it again.
void requireSameWhenLoaded(const std::string& text);

} // namespace Fuzz
