// Changes of rows of a drawing's tables. The input chooses them.
#pragma once

#include <vector>

#include "embedded/host/drawing_file/drawing_connection.h"
#include "fuzz/byte_source.h"

namespace Fuzz {

struct DrawingTable {
    const char* name;
    const char* key; // the columns that identify a row
    std::vector<const char*> columns;
};

/// The tables with their columns in the order of the schema.
const std::vector<DrawingTable>& drawingTables();

enum class RowAction { set, copy, remove };
/// The moment of a change. Checksums that are computed later fit it.
enum class RowMoment { beforeAll, beforeObjects, afterAll };

struct RowChange {
    RowAction action = RowAction::set;
    RowMoment moment = RowMoment::beforeAll;
    std::size_t table = 0;
    std::size_t column = 0; // the column that is set, in the row or in its copy
    std::size_t row = 0;    // its number, modulo the number of rows
    Embedded::StoredValue value;
};

RowChange nextRowChange(ByteSource& source);

} // namespace Fuzz
