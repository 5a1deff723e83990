// What holds of every drawing: it can be saved, and its file is the same again when it was loaded.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/host/database.h"

namespace Fuzz {

/// The file of a save in the drawing's own version, or the failure that it was answered with.
struct SavedDrawing {
    Qeapp::ErrorStatus status = Qeapp::eOk;
    std::string message{};
    std::string bytes{};
};
SavedDrawing savedDrawing(QeDbDatabase& database, QeDb::QeDbDwgVersion version);

/// Null where the file is refused.
std::unique_ptr<QeDbDatabase> loadedDrawing(const std::string& bytes);

/// Loads a file that the drawing was saved as.
void requireSameWhenLoaded(const QeDbDatabase& saved, const std::string& bytes);

/// What may be wrong with a file beside what a drawing is read from.
enum class Soundness {
    sound,       // nothing that keeps it from being saved as it is
    unusedRows,  // rows of no object, which a change may run into: it cannot be saved then
    damagedPages // trees and indexes: a save may not find what it has to change, and what it wrote is refused then
};

/// Loads a file, has `act` change the drawing, reads all of it, saves it and loads it again. What cannot be read is
/// refused with a message, and is not saved.
void requireReadOrRefused(const std::string& bytes, const std::function<void(QeDbDatabase&)>& act, Soundness soundness);

} // namespace Fuzz
