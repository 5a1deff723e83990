// Opening the database that a drawing file is.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/host/drawing_file/drawing_connection.h"
#include "embedded/host/drawing_file/drawing_file.h"

namespace Embedded {

/// As loadDrawing and loadDrawingFromBytes do, but for want of memory, which is std::bad_alloc.
FileResult openDrawing(const std::filesystem::path& file, DrawingAccess access, const LockWait& wait,
                       std::unique_ptr<QeDbDatabase>& database);
FileResult openDrawingFromBytes(const std::string& bytes, std::unique_ptr<QeDbDatabase>& database);

/// A connection to a drawing file, in a transaction of the kind that the access wants, after everything was checked
/// that can be checked without looking at any object. Without locks for sharing.
FileResult connect(const std::filesystem::path& file, DrawingAccess access, const LockWait& wait,
                   std::unique_ptr<DrawingConnection>& connection);

/// The drawing behind a connection that `connect` has made.
FileResult attachDrawing(std::unique_ptr<DrawingConnection> connection, const std::filesystem::path& file,
                         bool isShared, std::unique_ptr<QeDbDatabase>& database);

/// Why the file, which links are followed to, cannot be a drawing; eOk for a regular file. It is not opened.
FileResult inspectFile(const std::filesystem::path& file);

/// Why a file of several names is not changed: journals are named after the file, so that a writer under one name does
/// not see those of another. eOk for one that has no other name.
FileResult requireOneName(const std::filesystem::path& file);

/// The file's name as SQLite takes it.
std::string sqliteName(const std::filesystem::path& file);

} // namespace Embedded
