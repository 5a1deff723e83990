// Carrying out a save plan in a database.
#pragma once

#include "embedded/host/database/save_plan.h"
#include "embedded/host/drawing_file/drawing_connection.h"

namespace Embedded {

/// Changes the rows of a drawing's tables as the plan says, and its header. The caller begins and ends the transaction.
/// Throws an Error and what SQLiteCpp throws.
void writeDrawing(DrawingConnection& connection, const QeHost::DatabaseImp& database, const QeHost::SavePlan& plan,
                  QeDb::QeDbDwgVersion version);

} // namespace Embedded
