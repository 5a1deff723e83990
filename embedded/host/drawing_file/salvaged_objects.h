// The readable objects of a damaged drawing file, as rows.
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
    const char* remove;
};
inline constexpr std::array kDetailTables{
    DetailTable{"fields", "SELECT * FROM fields WHERE object = ?", "INSERT INTO fields VALUES (?, ?, ?, ?, ?)",
                "DELETE FROM fields WHERE object = ?"},
    DetailTable{"resbufs", "SELECT * FROM resbufs WHERE object = ?", "INSERT INTO resbufs VALUES (?, ?, ?, ?, ?)",
                "DELETE FROM resbufs WHERE object = ?"},
    DetailTable{"extended_data", "SELECT * FROM extended_data WHERE object = ?",
                "INSERT INTO extended_data VALUES (?, ?, ?, ?, ?, ?)", "DELETE FROM extended_data WHERE object = ?"},
};
inline constexpr const DetailTable* kFieldsTable = &kDetailTables[0];
inline constexpr const DetailTable* kExtendedDataTable = &kDetailTables[2];

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
    StoredText key; // of its entry, if it has one
};

/// Reads the details of an object and adds their checksums to `digest`. Throws an Error for damage.
std::vector<DetailRow> readDetailRows(DrawingConnection& connection, Handle object, RowDigest& digest);

/// Reads one object after the other and adds those that are lost to `salvage`.
std::map<Handle, SalvagedObject> readSalvagedObjects(DrawingConnection& connection, Salvage& salvage);

} // namespace Embedded
