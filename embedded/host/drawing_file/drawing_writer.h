// Carrying out a save in a database.
#pragma once

#include "embedded/host/database/save_plan.h"
#include "embedded/host/drawing_file/drawing_connection.h"

namespace Embedded {

/// Changes the rows of a drawing's tables as the plan says, and its header. The connection is in a transaction, which
/// the caller ends. Throws an Error and what SQLiteCpp throws.
void writeDrawing(DrawingConnection& connection, const QeHost::DatabaseImp& database, const QeHost::SavePlan& plan,
                  QeDb::QeDbDwgVersion version);

} // namespace Embedded
