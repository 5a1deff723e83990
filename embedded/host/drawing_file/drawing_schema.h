// The tables of a drawing file; see docs/formats/drawing-file.md.
#pragma once

#include <cstdint>

#include <SQLiteCpp/SQLiteCpp.h>

namespace Embedded::DrawingSchema {

inline constexpr std::int32_t kApplicationId = 0x4F434457; // "OCDW"
inline constexpr int kFormat = 2;
inline constexpr int kPageSize = 4096;

/// Makes the tables in an empty database.
void create(SQLite::Database& database);
/// Throws an Error unless the database's schema is the expected one. Reads nothing but the schema.
void require(SQLite::Database& database);

} // namespace Embedded::DrawingSchema
