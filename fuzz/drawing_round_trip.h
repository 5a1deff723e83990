// Checks that every drawing can be saved, and that its file gives the same drawing when it is loaded.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/host/database.h"

namespace Fuzz {

/// The file of a save, or its failure.
struct SavedDrawing {
    Qeapp::ErrorStatus status = Qeapp::eOk;
    std::string message{};
    std::string bytes{};
};
SavedDrawing saveDrawing(QeDbDatabase& database, QeDb::QeDbDwgVersion version);

/// Null if the file is refused.
std::unique_ptr<QeDbDatabase> loadDrawing(const std::string& bytes);

/// Loads the file of a save and compares the drawings.
void requireSameWhenLoaded(const QeDbDatabase& saved, const std::string& bytes);

/// The damage that a file may have outside the rows of its drawing.
enum class Soundness {
    sound,       // none: the drawing can be saved
    unusedRows,  // rows without an object: a change that meets them cannot be saved
    damagedPages // damaged trees and indexes: a save may miss rows, and the file is refused afterwards
};

/// Loads a file, changes the drawing by `act`, reads all of it, saves it and loads it again. A drawing that cannot be
/// read must be refused with a message and must not be saved.
void requireReadOrRefused(const std::string& bytes, const std::function<void(QeDbDatabase&)>& act, Soundness soundness);

} // namespace Fuzz
