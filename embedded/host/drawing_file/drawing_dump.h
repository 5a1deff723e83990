// A drawing as text.
#pragma once

#include <string>

#include "embedded/host/database/file_result.h"
#include "platform/export.h"
#include "platform/host/database.h"

namespace Embedded {

/// On eOk `text` is everything that a save would keep, object after object in the order of their handles, in UTF-8: two
/// drawings that are equal give equal texts, and a difference is a line. Every object is loaded for it; otherwise the
/// text is empty and the result says what cannot be read.
QEHOST_API FileResult dumpDrawing(const QeDbDatabase& database, std::string& text);

} // namespace Embedded
