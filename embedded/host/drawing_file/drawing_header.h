// The header of a drawing file.
#pragma once

#include "embedded/host/database/database.h"
#include "embedded/host/drawing_file/drawing_connection.h"

namespace Embedded {

/// A handle is 0 if the drawing does not have the object.
struct DrawingHeader {
    std::int64_t version = 0; // of the drawing
    Handle nextHandle = 0;
    Handle namedObjects = 0;
    Handle regAppTable = 0;
    Handle blockTable = 0;
    Handle modelSpace = 0;
    Handle geoData = 0;

    /// Returns whether the object is one of the roots, which have no owner.
    bool isRoot(Handle object) const { return object == namedObjects || object == regAppTable || object == blockTable; }
};

DrawingHeader makeHeader(const QeHost::DatabaseImp& database, QeDb::QeDbDwgVersion version);
void writeHeader(DrawingConnection& connection, const DrawingHeader& header);
/// Throws an Error for damage.
DrawingHeader readHeader(DrawingConnection& connection);

} // namespace Embedded
