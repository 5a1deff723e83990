#include "fuzz/unconstrained_drawing.h"

#include <utility>

#include <sqlite3.h>

#include "fuzz/sample_drawing.h"
#include "fuzz/serialized_database.h"

namespace Fuzz {
namespace {

/// The declarations of the schema without types, references and checks. Unique columns keep their place in the
/// declaration, since SQLite assigns automatic indexes by it.
constexpr const char* kLooseTables = R"(
UPDATE sqlite_schema SET sql = CASE name
    WHEN 'header' THEN 'CREATE TABLE header (field PRIMARY KEY, value, checksum) WITHOUT ROWID'
    WHEN 'objects' THEN 'CREATE TABLE objects (handle INTEGER PRIMARY KEY, class, owner, owned, owned_digest, details,
        details_digest, checksum)'
    WHEN 'entries' THEN 'CREATE TABLE entries (dictionary, key, object UNIQUE, checksum, PRIMARY KEY (dictionary, key))
        WITHOUT ROWID'
    WHEN 'records' THEN 'CREATE TABLE records (object INTEGER PRIMARY KEY, symbol_table, checksum)'
    WHEN 'fields' THEN 'CREATE TABLE fields (object, field, value, target, checksum, UNIQUE (object, field))'
    WHEN 'resbufs' THEN 'CREATE TABLE resbufs (object, position, code, value, checksum, UNIQUE (object, position))'
    ELSE 'CREATE TABLE extended_data (object, application, position, code, value, checksum,
        UNIQUE (object, application, position))'
    END WHERE type = 'table')";

constexpr const char* kNoIndexes = R"(
UPDATE sqlite_schema SET sql = replace(replace(replace(replace(sql, 'object UNIQUE', 'object'),
    ', UNIQUE (object, field)', ''), ', UNIQUE (object, position)', ''),
    ',
        UNIQUE (object, application, position)', '') WHERE type = 'table';
DELETE FROM sqlite_schema WHERE type = 'index')";

/// Selects the one row of a change.
std::string selectRow(const DrawingTable& table)
{
    const std::string name = table.name;
    const std::string key = table.key;
    return " WHERE (" + key + ") = (SELECT " + key + " FROM " + name +
           " LIMIT 1 OFFSET ?2 % max(1, (SELECT count(*) FROM " + name + ")))";
}

std::string makeCopySql(const DrawingTable& table, std::size_t column)
{
    std::string into;
    std::string from;
    for (std::size_t each = 0; each < table.columns.size(); ++each) {
        into += (each > 0 ? ", " : "") + std::string(table.columns[each]);
        from += (each > 0 ? ", " : "") + std::string(each == column ? "?1" : table.columns[each]);
    }
    return "INSERT OR REPLACE INTO " + std::string(table.name) + " (" + into + ") SELECT " + from + " FROM " +
           table.name + selectRow(table);
}

std::string makeSql(RowAction action, const DrawingTable& table, std::size_t column)
{
    switch (action) {
    case RowAction::set:
        return "UPDATE OR REPLACE " + std::string(table.name) + " SET " + table.columns[column] + " = ?1" +
               selectRow(table);
    case RowAction::copy:
        return makeCopySql(table, column);
    case RowAction::remove:
        break;
    }
    return "DELETE FROM " + std::string(table.name) + selectRow(table);
}

void bindValue(SQLite::Statement& statement, const Embedded::StoredValue& value)
{
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        statement.bind(1, *integer);
    else if (const auto* real = std::get_if<double>(&value))
        statement.bind(1, *real);
    else if (const auto* text = std::get_if<Embedded::StoredText>(&value); text == nullptr)
        statement.bind(1);
    else if (text->isBlob)
        statement.bind(1, text->bytes.data(), static_cast<int>(text->bytes.size()));
    else
        statement.bind(1, text->bytes);
}

} // namespace

UnconstrainedDrawing::UnconstrainedDrawing(Indexes indexes) : database_(":memory:", SQLite::OPEN_READWRITE)
{
    restoreInto(database_, sampleDrawing());
    Tests::addChecksumFunctions(database_);
    removeConstraints(indexes);
    checksums_.emplace(database_);
    forgetSchema_.emplace(database_, "DELETE FROM sqlite_schema");
    restoreSchema_.emplace(database_, "INSERT INTO sqlite_schema (rowid, type, name, tbl_name, rootpage, sql) "
                                      "SELECT * FROM temp.strict_schema");
}

void UnconstrainedDrawing::removeConstraints(Indexes indexes)
{
    database_.exec("CREATE TEMP TABLE strict_schema AS SELECT rowid, * FROM sqlite_schema");
    database_.exec("PRAGMA writable_schema = ON");
    database_.exec(kLooseTables);
    if (indexes == Indexes::stale)
        database_.exec(kNoIndexes);
    database_.exec("PRAGMA writable_schema = RESET");
    database_.exec("PRAGMA writable_schema = ON");
}

std::string UnconstrainedDrawing::makeFile(const std::vector<RowChange>& changes)
{
    database_.exec("BEGIN");
    applyChanges(changes, RowMoment::beforeAll);
    checksums_->computeForDetails();
    checksums_->computeCounts();
    applyChanges(changes, RowMoment::beforeObjects);
    checksums_->computeForObjects();
    applyChanges(changes, RowMoment::afterAll);
    for (SQLite::Statement* const each : {&*forgetSchema_, &*restoreSchema_}) {
        each->reset();
        each->exec();
    }
    std::string bytes = serializeDatabase(database_);
    database_.exec("ROLLBACK");
    return bytes;
}

void UnconstrainedDrawing::applyChanges(const std::vector<RowChange>& changes, RowMoment moment)
{
    for (const RowChange& change : changes) {
        if (change.moment != moment)
            continue;
        SQLite::Statement& statement = getStatement(change);
        if (change.action != RowAction::remove)
            bindValue(statement, change.value);
        statement.bind(2, static_cast<std::int64_t>(change.row));
        static_cast<void>(
            statement.tryExecuteStep()); // SQLite refuses a handle that is not a number and a key that is null
        statement.tryReset();
    }
}

SQLite::Statement& UnconstrainedDrawing::getStatement(const RowChange& change)
{
    const auto key = std::tuple(change.action, change.table, change.column);
    if (const auto known = statements_.find(key); known != statements_.end())
        return known->second;
    const std::string sql = makeSql(change.action, drawingTables()[change.table], change.column);
    return statements_.try_emplace(key, database_, sql).first->second;
}

std::string drawingWithChanges(ByteSource& source, UnconstrainedDrawing::Indexes indexes)
{
    constexpr std::size_t kMaximumChanges = 12;
    static UnconstrainedDrawing withIndexes(UnconstrainedDrawing::Indexes::kept);
    static UnconstrainedDrawing withStaleIndexes(UnconstrainedDrawing::Indexes::stale);
    std::vector<RowChange> changes;
    while (!source.isEmpty() && changes.size() < kMaximumChanges)
        changes.push_back(nextRowChange(source));
    return (indexes == UnconstrainedDrawing::Indexes::stale ? withStaleIndexes : withIndexes).makeFile(changes);
}

} // namespace Fuzz
