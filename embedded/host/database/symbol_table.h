// Symbol tables: what they hold, and looking records up by name among the live ones.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "embedded/host/database/object.h"

namespace QeHost {

/// Erased records stay, so that they are back when they are unerased.
struct SymbolTableState final : ObjectState {
    std::vector<ObjectRecord*> records;

    void visit(FieldVisitor& visitor) override { visitor.records(records); }
};

struct SymbolRecordState final : ObjectState {
    std::wstring name;

    void visit(FieldVisitor& visitor) override { visitor.text("name", name); }
};

/// The table's live record of that name, whatever its case; or null.
ObjectRecord* findRecord(const ObjectRecord& table, std::wstring_view name);
const std::wstring& recordName(const ObjectRecord& record);
/// Whether the record's table has another live record of its name.
bool hasNamesake(const ObjectRecord& record);

/// The form in which two names that differ in case alone are equal, and by which tables are ordered.
std::wstring foldedName(std::wstring_view name);
bool isSameName(std::wstring_view left, std::wstring_view right);

} // namespace QeHost
