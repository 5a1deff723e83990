// One row of the registry's table: a key, or a value of a key.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <SQLiteCpp/SQLiteCpp.h>

#include "platform/win32.h"

namespace Embedded {

struct RegistryRow {
    std::int64_t id = 0;
    std::int64_t owner = 0; // of a value: its key's id; of a key: 0
    std::wstring name;      // of a value: its name; of a key: its path; in the case of its creation
    DWORD type = REG_NONE;
    std::string data; // the bytes that callers pass and get
};

/// Binds all columns in their order to the parameters from 1 on.
void bindRow(SQLite::Statement& statement, const RegistryRow& row);
/// Binds the content of the column `folded` for a name or a path.
void bindFolded(SQLite::Statement& statement, int parameter, std::wstring_view name);
/// Reads the current row of a statement that selects all columns. Throws ErrorException if its checksum does not fit.
RegistryRow readRow(SQLite::Statement& statement);

} // namespace Embedded
