// Opening the database that a drawing file is.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/host/drawing_file/drawing_connection.h"
#include "embedded/host/drawing_file/drawing_file.h"

namespace Embedded {

/// As loadDrawing and loadDrawingFromBytes do, but for want of memory, which is std::bad_alloc.
Expected<std::unique_ptr<QeDbDatabase>> openDrawing(const std::filesystem::path& file, DrawingAccess access,
                                                    const SqlWait& wait);
Expected<std::unique_ptr<QeDbDatabase>> openDrawingFromBytes(const std::string& bytes);

/// A connection to a drawing file, in a transaction of the kind that the access wants, after everything was checked
/// that can be checked without looking at any object. Without locks for sharing.
Expected<std::unique_ptr<DrawingConnection>> connect(const std::filesystem::path& file, DrawingAccess access,
                                                     const SqlWait& wait);

/// The drawing behind a connection that `connect` has made. Messages name the file by `name`, unless that is empty.
Expected<std::unique_ptr<QeDbDatabase>> attachDrawing(std::unique_ptr<DrawingConnection> connection,
                                                      const std::filesystem::path& file, const std::string& name,
                                                      bool isShared);

/// Fails unless the file, which links are followed to, is a regular one. Does not open it.
Expected<void> requireRegularFile(const std::filesystem::path& file);

/// Fails for a file of several names. Journals are named after the file, so that a writer under one name does not see
/// those of another.
Expected<void> requireOneName(const std::filesystem::path& file);

/// The file's name as SQLite takes it.
std::string sqliteName(const std::filesystem::path& file);

} // namespace Embedded
