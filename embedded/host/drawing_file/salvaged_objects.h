// The objects that can be read of a damaged drawing file, as rows.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "embedded/host/database/object_classes.h"
#include "embedded/host/drawing_file/drawing_connection.h"
#include "embedded/host/drawing_file/drawing_salvage.h"

namespace Embedded {

/// The tables with the details of objects.
struct DetailTable {
    const char* name;
    const char* query;
    const char* insert;
};
inline constexpr std::array kDetailTables{
    DetailTable{"fields", "SELECT * FROM fields WHERE object = ?", "INSERT INTO fields VALUES (?, ?, ?, ?, ?)"},
    DetailTable{"resbufs", "SELECT * FROM resbufs WHERE object = ?", "INSERT INTO resbufs VALUES (?, ?, ?, ?, ?)"},
    DetailTable{"extended_data", "SELECT * FROM extended_data WHERE object = ?",
                "INSERT INTO extended_data VALUES (?, ?, ?, ?, ?, ?)"},
};

/// A row of such a table, without its checksum.
struct DetailRow {
    const DetailTable* table;
    StoredRow values;
};

struct SalvagedObject {
    std::string className;
    const QeHost::ObjectClass* itsClass = nullptr;
    Handle owner = 0;
    std::vector<DetailRow> details;
    StoredText key; // of its entry, where there is one
};

/// The details of an object, the sum of whose checksums goes into `digest`. Throws an Error.
std::vector<DetailRow> readDetailRows(DrawingConnection& connection, Handle object, RowDigest& digest);

/// Reads what can be read, one object after the other, and notes what is lost.
std::map<Handle, SalvagedObject> readSalvagedObjects(DrawingConnection& connection, Salvage& salvage);

} // namespace Embedded
