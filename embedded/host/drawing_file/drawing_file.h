// Drawing files (.qedb): SQLite databases; see docs/formats/drawing-file.md.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/base/error.h"
#include "embedded/base/sql_wait.h"
#include "platform/export.h"
#include "platform/host/database.h"

namespace Embedded {

enum class DrawingAccess {
    reading,  // sees the file as it is now until the drawing is closed; others may read it, and write it in between
    changing, // holds the lock for writing until the drawing is saved or closed; others may read it
    sharing,  // holds no lock; an object that is loaded after another program has changed the file is eFileChanged
};

/// Opens a drawing file as a new database, whose objects are loaded from it as they are opened. On failure the file is
/// as it was: eFileNotFound for a file that cannot be opened, eFileTooNew, eFileDamaged for whatever else is no drawing
/// file, eFileLocked when another process keeps it for longer than `wait` says, eFileWriteFailed for changing what is
/// write-protected or has other names too, eOutOfMemory. The place begins with the file's name.
QEHOST_API Expected<std::unique_ptr<QeDbDatabase>>
loadDrawing(const std::filesystem::path& file, DrawingAccess access = DrawingAccess::sharing, const SqlWait& wait = {});

/// What saveDrawing may write over.
enum class Overwriting {
    refused,   // nothing but a file of no bytes
    drawings,  // a drawing
    noDatabase // a drawing, and a file that is no SQLite database
};

/// The host's save. A version other than the drawing's, or one older than kGeoDataTextDwg, runs the decomposition
/// reactors first, inside a transaction: when one of them fails or records an error, nothing is written and the open
/// drawing is as it was; the result is then the recorded code and message. A failed write undoes them too.
/// eInvalidDrawingVersion for a version that is none. Afterwards the drawing has the version it was saved in.
///
/// Into the file that the drawing was loaded from, what was changed is written in one transaction, after which no lock
/// is held: eFileChanged when another program has changed the file since. Into another file the whole drawing is
/// written, and stays one of the file that it was loaded from: eFileExists for a file that is there, unless
/// `overwriting` is allowed and it is a drawing; a file of no bytes counts as absent. eFileLocked, eFileWriteFailed and
/// eOutOfMemory leave every file as it was. A drawing of which something could not be read is not saved: the result is
/// that failure.
QEHOST_API Expected<void> saveDrawing(QeDbDatabase& database, const std::filesystem::path& file,
                                      QeDb::QeDbDwgVersion version, Overwriting overwriting = Overwriting::refused,
                                      const SqlWait& wait = {});

/// The same for a drawing file that lies in memory.
QEHOST_API Expected<std::unique_ptr<QeDbDatabase>> loadDrawingFromBytes(const std::string& bytes);
QEHOST_API Expected<std::string> saveDrawingToBytes(QeDbDatabase& database, QeDb::QeDbDwgVersion version);

/// Fails with what kept an object of the drawing from being loaded.
QEHOST_API Expected<void> loadingResult(const QeDbDatabase& database);

} // namespace Embedded
