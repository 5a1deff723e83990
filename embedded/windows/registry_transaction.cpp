#include "embedded/windows/registry_transaction.h"

#include <string>
#include <utility>

#include "embedded/windows/registry_name.h"

namespace Embedded {
namespace {

constexpr std::int64_t kOwnerOfKeys = 0;

std::optional<RegistryRow> readNextRow(SQLite::Statement& statement)
{
    return statement.executeStep() ? std::optional(readRow(statement)) : std::nullopt;
}

} // namespace

void RegistryTransaction::RollBack::operator()(sqlite3* connection) const
{
    if (sqlite3_get_autocommit(connection) == 0) // otherwise SQLite has rolled back already
        sqlite3_exec(connection, "ROLLBACK", nullptr, nullptr, nullptr);
}

RegistryTransaction::RegistryTransaction(Intent intent)
{
    while (!begin(intent))
        open_.reset();
}

/// Returns false if the file was replaced before the lock was held. With the lock held, the name leads to the open
/// file.
bool RegistryTransaction::begin(Intent intent)
{
    connection_ = connectRegistry(intent == Intent::create);
    if (connection_ == nullptr)
        return true;
    connection_->database().exec(intent == Intent::read ? "BEGIN" : "BEGIN IMMEDIATE");
    open_.reset(connection_->database().getHandle());
    if (connection_->isStale())
        return false;
    if (connection_->hasRegistry())
        return true;
    if (intent == Intent::create) {
        connection_->createTable();
        put({}); // the root
    } else {
        open_.reset();
        connection_ = nullptr;
    }
    return true;
}

void RegistryTransaction::commit()
{
    if (connection_ != nullptr)
        connection_->database().exec("COMMIT");
}

std::optional<RegistryRow> RegistryTransaction::find(std::int64_t owner, std::wstring_view name) const
{
    SQLite::Statement found(connection_->database(), "SELECT * FROM registry WHERE owner = ? AND folded = ?");
    found.bind(1, owner);
    bindFolded(found, 2, name);
    return readNextRow(found);
}

std::optional<RegistryRow> RegistryTransaction::findKey(std::wstring_view path) const
{
    if (connection_ != nullptr)
        return find(kOwnerOfKeys, path);
    return path.empty() ? std::optional(RegistryRow()) : std::nullopt;
}

std::optional<RegistryRow> RegistryTransaction::findValue(const RegistryRow& key, std::wstring_view name) const
{
    return connection_ != nullptr ? find(key.id, name) : std::nullopt;
}

std::optional<RegistryRow> RegistryTransaction::valueAt(const RegistryRow& key, DWORD index) const
{
    if (connection_ == nullptr)
        return std::nullopt;
    RegistryConnection::EnumeratedValue& last = connection_->lastEnumerated;
    if (last.key != key.id || last.version != connection_->version() || index < last.index)
        last = {.key = key.id, .index = 0, .row = 0, .version = connection_->version()};
    // In the order of the rows, without the index ("+owner"), whose order would have to be sorted for each value.
    SQLite::Statement next(connection_->database(),
                           "SELECT * FROM registry WHERE id >= ? AND +owner = ? ORDER BY id LIMIT 1 OFFSET ?");
    next.bind(1, last.row);
    next.bind(2, key.id);
    next.bind(3, static_cast<std::int64_t>(index - last.index));
    std::optional<RegistryRow> value = readNextRow(next);
    if (value) {
        last.index = index;
        last.row = value->id;
    }
    return value;
}

void RegistryTransaction::put(RegistryRow row)
{
    if (row.id == 0)
        row.id = connection_->database().execAndGet("SELECT coalesce(max(id), 0) + 1 FROM registry").getInt64();
    SQLite::Statement replacement(connection_->database(), "REPLACE INTO registry VALUES (?, ?, ?, ?, ?, ?, ?)");
    bindRow(replacement, row);
    replacement.exec();
}

void RegistryTransaction::createKey(std::wstring_view path)
{
    std::wstring spelled;
    for (const std::wstring_view part : pathParts(path)) {
        spelled += (spelled.empty() ? L"" : L"\\") + std::wstring(part);
        if (const auto present = findKey(spelled))
            spelled = present->name;
        else
            put({.id = 0, .owner = kOwnerOfKeys, .name = spelled, .type = REG_NONE, .data = {}});
    }
}

void RegistryTransaction::setValue(const RegistryRow& key, RegistryRow value)
{
    value.owner = key.id;
    if (const auto present = findValue(key, value.name)) {
        value.id = present->id;
        value.name = present->name;
    }
    put(std::move(value));
}

void RegistryTransaction::remove(const RegistryRow& row)
{
    SQLite::Statement removal(connection_->database(), "DELETE FROM registry WHERE id = ?");
    removal.bind(1, row.id);
    removal.exec();
}

} // namespace Embedded
