// One row of the registry's table: a key, or a value of a key.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <SQLiteCpp/SQLiteCpp.h>

#include "platform/windows.h"

namespace Embedded {

struct RegistryRow {
    std::int64_t id = 0;
    std::int64_t owner = 0; // of a value: its key's id; of a key: 0
    std::wstring name;      // of a value: its name; of a key: its path; as it was first spelled
    DWORD type = REG_NONE;
    std::string data; // as callers have it
};

/// Binds all columns in their order, from the first parameter on.
void bindRow(SQLite::Statement& statement, const RegistryRow& row);
/// Binds what the column `folded` has for a name or a path.
void bindFolded(SQLite::Statement& statement, int parameter, std::wstring_view name);
/// The row that a statement of all columns stands at. Throws ErrorException when its checksum does not fit.
RegistryRow readRow(SQLite::Statement& statement);

} // namespace Embedded
