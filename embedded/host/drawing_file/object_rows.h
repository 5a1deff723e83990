// The rows of one object: reading them into its fields, and writing them from its fields. Which fields there are, the
// object's class says; no class is named here.
#pragma once

#include "embedded/host/database/object.h"
#include "embedded/host/drawing_file/drawing_connection.h"

namespace Embedded {

/// An object's own row.
struct ObjectRow {
    std::string className;
    Handle owner = 0;
    RowDigest owned;   // what it lists: its rows in entries and records
    RowDigest details; // its rows in fields, resbufs and extended_data
};

/// Of the values of a row of `objects`.
ObjectRow toObjectRow(const StoredRow& row);
/// Throws an Error for an object that is not there, and for damage.
ObjectRow readObjectRow(DrawingConnection& connection, Handle object);
/// Inserts the row, or puts it in the place of the one that is there.
void writeObjectRow(DrawingConnection& connection, Handle object, const ObjectRow& row);

/// Fills every field of a stored object. Throws an Error.
void readFields(DrawingConnection& connection, QeHost::ObjectRecord& record, QeHost::ObjectState& state);
/// Writes the details of an object that has none in the file, and answers their digest.
RowDigest writeFields(DrawingConnection& connection, Handle object, QeHost::ObjectState& state);

/// Inserts a row into a table, and answers its checksum.
std::int64_t insertRow(DrawingConnection& connection, const char* insert, std::string_view table, const StoredRow& row);

inline std::int64_t storedHandle(Handle handle)
{
    return static_cast<std::int64_t>(handle);
}
/// The handle in a row; throws an Error for a number that is none.
Handle requireHandle(const StoredValue& value);

} // namespace Embedded
