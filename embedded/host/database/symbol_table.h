// Looking records up by name among the live ones of a table.
#pragma once

#include <string_view>

#include "embedded/host/database/object.h"

namespace QeHost {

/// The table's live record of that name, whatever its case; or null.
ObjectRecord* findRecord(const ObjectRecord& table, std::wstring_view name);
const std::wstring& nameOf(const ObjectRecord& record);
/// Whether the record's table has another live record of its name.
bool hasNamesake(const ObjectRecord& record);

} // namespace QeHost
