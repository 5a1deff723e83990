// Drawing files (.qedb): JSON with a format version; see docs/formats/drawing-file.md.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "embedded/host/atomic_file.h"
#include "embedded/host/drawing_image.h"
#include "embedded/host/file_result.h"
#include "platform/export.h"
#include "platform/host/database.h"

namespace Embedded {

inline constexpr std::uint64_t kLargestDrawingFileInBytes = std::uint64_t{1} << 30;

/// The file's text for a drawing; two equal drawings give equal texts.
QEHOST_API std::string drawingTextFrom(const DrawingImage& image);

/// Reads such a text. On eOk `image` is valid; otherwise it is as it was: eFileDamaged or eFileTooNew.
QEHOST_API FileResult drawingImageFrom(std::string_view text, DrawingImage& image);

/// Opens a drawing file as a new database. On failure it is null and the file is as it was: eFileNotFound for a file
/// that cannot be opened, eFileTooLarge, eFileTooNew, eFileDamaged for whatever else is no drawing file, eOutOfMemory.
/// The message begins with the file's name.
QEHOST_API FileResult loadDrawing(const std::filesystem::path& file, std::unique_ptr<QeDbDatabase>& database);

/// The host's save. A version other than the drawing's, or one older than kGeoDataTextDwg, runs the decomposition
/// reactors first, inside a transaction: when one of them fails or records an error, nothing is written and the open
/// drawing is as it was; the result is then the recorded code and message. A failed write undoes them too:
/// eFileWriteFailed. eInvalidDrawingVersion for a version that is none. On eOk the drawing has the version it was saved
/// in.
QEHOST_API FileResult saveDrawing(QeDbDatabase& database, const std::filesystem::path& file,
                                  QeDb::QeDbDwgVersion version);

/// Takes a drawing file's text to where it belongs.
using DrawingWriter = std::function<FileResult(std::string_view text)>;

/// The same save to somewhere else than a file. A result of `write` other than eOk undoes it and is the save's; no file
/// is named in a message.
QEHOST_API FileResult saveDrawing(QeDbDatabase& database, QeDb::QeDbDwgVersion version, const DrawingWriter& write);

} // namespace Embedded
