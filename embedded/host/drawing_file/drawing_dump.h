// A drawing as text.
#pragma once

#include <string>

#include "embedded/base/error.h"
#include "platform/export.h"
#include "platform/host/database.h"

namespace Embedded {

/// Returns everything that a save would keep as UTF-8, object after object in the order of their handles. Equal
/// drawings give equal texts, and a difference is a line. Loads every object. The Error says what cannot be read.
QEHOST_API Expected<std::string> dumpDrawing(const QeDbDatabase& database);

} // namespace Embedded
