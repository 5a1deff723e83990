// Symbol tables and the lookup of records by name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "embedded/host/database/object.h"

namespace QeHost {

/// Erased records stay in the list, and are there again when they are unerased.
struct SymbolTableState final : ObjectState {
    std::vector<ObjectRecord*> records;

    void visit(FieldVisitor& visitor) override { visitor.records(records); }
};

struct SymbolRecordState final : ObjectState {
    std::wstring name;

    void visit(FieldVisitor& visitor) override { visitor.text("name", name); }
};

/// The table's live record of that name, or null. Ignores case.
ObjectRecord* findRecord(const ObjectRecord& table, std::wstring_view name);
const std::wstring& recordName(const ObjectRecord& record);
/// Returns whether the record's table has another live record of its name.
bool hasNamesake(const ObjectRecord& record);

} // namespace QeHost
