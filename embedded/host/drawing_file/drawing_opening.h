// Opening a drawing file.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/host/drawing_file/drawing_connection.h"
#include "embedded/host/drawing_file/drawing_file.h"

namespace Embedded {

/// Do what loadDrawing and loadDrawingFromBytes do, but throw std::bad_alloc when memory is short.
Expected<std::unique_ptr<QeDbDatabase>> openDrawing(const std::filesystem::path& file, DrawingAccess access,
                                                    const LockWait& wait);
Expected<std::unique_ptr<QeDbDatabase>> openDrawingFromBytes(const std::string& bytes);

/// Opens a connection to a drawing file and begins the transaction that the access needs. Checks everything that can be
/// checked without reading an object.
Expected<std::unique_ptr<DrawingConnection>> connect(const std::filesystem::path& file, DrawingAccess access,
                                                     const LockWait& wait);

/// Makes the drawing of a connection from `connect`. Errors name the file by `name`, or not at all if it is empty.
Expected<std::unique_ptr<QeDbDatabase>> attachDrawing(std::unique_ptr<DrawingConnection> connection,
                                                      const std::filesystem::path& file, const std::string& name,
                                                      bool isShared);

/// Fails unless the file is a regular one. Follows links, and does not open the file.
Expected<void> requireRegularFile(const std::filesystem::path& file);

/// Fails for a file of several names. Journals are named after the file, so that a writer under one name does not see
/// those of another.
Expected<void> requireOneName(const std::filesystem::path& file);

/// The file's name in the form that SQLite needs.
std::string sqliteName(const std::filesystem::path& file);

} // namespace Embedded
