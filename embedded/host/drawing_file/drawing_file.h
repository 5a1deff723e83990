// Drawing files (.qedb): SQLite databases; see docs/formats/drawing-file.md.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "embedded/base/error.h"
#include "embedded/base/lock_wait.h"
#include "platform/export.h"
#include "platform/host/database.h"

namespace Embedded {

/// The bytes that every SQLite database begins with, and so every drawing file.
inline constexpr std::string_view kDatabaseBeginning("SQLite format 3", 16); // the NUL belongs to it

enum class DrawingAccess {
    reading,  // sees the file as it is now until the drawing is closed; others may read and change the file
    changing, // holds the write lock until the drawing is saved or closed; others may read the file
    sharing,  // holds no lock; loading an object after another program has changed the file is eFileChanged
};

/// Opens a drawing file as a new database. Objects are loaded from the file when they are opened. A failure does not
/// change the file:
/// - eFileNotFound for a file that cannot be opened;
/// - eFileTooNew for a newer format, eFileDamaged for any other file that is not a drawing;
/// - eFileLocked if another process locks it for longer than `wait` says;
/// - eFileWriteFailed for changing a file that is write-protected or has several names;
/// - eOutOfMemory.
/// The place of the Error begins with the file's name.
QEHOST_API Expected<std::unique_ptr<QeDbDatabase>> loadDrawing(const std::filesystem::path& file,
                                                               DrawingAccess access = DrawingAccess::sharing,
                                                               const LockWait& wait = {});

/// What saveDrawing may write over.
enum class Overwriting {
    refused,   // only an empty file
    drawings,  // a drawing
    noDatabase // a drawing, or a file that is not an SQLite database
};

/// Saves a drawing. A version other than the drawing's, or one older than kGeoDataTextDwg, runs the decomposition
/// reactors first, inside a transaction. If one of them fails or records an error, or the write fails, the transaction
/// is undone, nothing is written, and the Error has the recorded code and message. Afterwards the drawing has the
/// version that it was saved in.
///
/// Saving into the drawing's own file writes the changes in one transaction and then holds no lock. Saving into another
/// file writes the whole drawing; the drawing still belongs to the file that it was loaded from. An empty file counts
/// as absent.
///
/// A failure leaves every file as it was:
/// - eInvalidDrawingVersion;
/// - eFileChanged if another program has changed the drawing's own file since it was opened;
/// - eFileExists for another file that exists, unless `overwriting` allows it;
/// - eFileLocked, eFileWriteFailed, eOutOfMemory;
/// - the failure of an object of the drawing that could not be read before.
QEHOST_API Expected<void> saveDrawing(QeDbDatabase& database, const std::filesystem::path& file,
                                      QeDb::QeDbDwgVersion version, Overwriting overwriting = Overwriting::refused,
                                      const LockWait& wait = {});

/// The same for a drawing file that lies in memory.
QEHOST_API Expected<std::unique_ptr<QeDbDatabase>> loadDrawingFromBytes(const std::string& bytes);
QEHOST_API Expected<std::string> saveDrawingToBytes(QeDbDatabase& database, QeDb::QeDbDwgVersion version);

/// Fails with the first failure to load an object of the drawing.
QEHOST_API Expected<void> loadingResult(const QeDbDatabase& database);

} // namespace Embedded
