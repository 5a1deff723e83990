// Changes of the rows of a drawing's tables, which the input decides.
#pragma once

#include <vector>

#include "embedded/host/drawing_file/drawing_connection.h"
#include "fuzz/byte_source.h"

namespace Fuzz {

struct DrawingTable {
    const char* name;
    const char* key; // the columns that tell its rows apart
    std::vector<const char*> columns;
};

/// In the order of their columns in the schema.
const std::vector<DrawingTable>& drawingTables();

enum class RowAction { set, copy, remove };
/// When a change is made: what is reckoned after it fits it.
enum class RowMoment { beforeAll, beforeObjects, afterAll };

struct RowChange {
    RowAction action = RowAction::set;
    RowMoment moment = RowMoment::beforeAll;
    std::size_t table = 0;
    std::size_t column = 0; // that is set, in the row or in its copy
    std::size_t row = 0;    // its place among the rows that there are, counted around
    Embedded::StoredValue value;
};

RowChange nextRowChange(ByteSource& source);

} // namespace Fuzz
