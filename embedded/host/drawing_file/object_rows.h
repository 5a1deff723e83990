// Reading and writing the rows of one object. The object's class lists its fields; no class is named here.
#pragma once

#include "embedded/host/database/object.h"
#include "embedded/host/drawing_file/drawing_connection.h"

namespace Embedded {

/// An object's own row.
struct ObjectRow {
    std::string className;
    Handle owner = 0;
    RowDigest owned;   // its rows in entries and records
    RowDigest details; // its rows in fields, resbufs and extended_data
};

/// Converts the values of a row of `objects`. Throws an Error for damage.
ObjectRow toObjectRow(const StoredRow& row);
/// Throws an Error for an object that does not exist and for damage.
ObjectRow readObjectRow(DrawingConnection& connection, Handle object);
/// Inserts the row or replaces the existing one.
void writeObjectRow(DrawingConnection& connection, Handle object, const ObjectRow& row);

/// Reads every field of a stored object. Throws an Error for damage.
void readFields(DrawingConnection& connection, QeHost::ObjectRecord& record, QeHost::ObjectState& state);
/// Writes the details of an object that has none in the file, and returns their digest.
RowDigest writeFields(DrawingConnection& connection, Handle object, QeHost::ObjectState& state);

/// Inserts a row into a table and returns its checksum.
std::int64_t insertRow(DrawingConnection& connection, const char* insert, std::string_view table, const StoredRow& row);

inline std::int64_t storedHandle(Handle handle)
{
    return static_cast<std::int64_t>(handle);
}
/// Returns the handle in a row. Throws an Error for another value.
Handle requireHandle(const StoredValue& value);
/// Returns the key in a row of `entries`. Throws an Error for another value than a text that is not empty.
std::wstring requireKey(const StoredValue& value);

} // namespace Embedded
