#include "embedded/host/drawing_file/drawing_schema.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/host/database/host_error.h"

namespace Embedded::DrawingSchema {
namespace {

/// A row of SQLite's own table of the schema.
struct SchemaRow {
    const char* type;
    const char* name;
    const char* table;
    const char* sql; // empty for an index that SQLite makes for a constraint
};

constexpr SchemaRow kSchema[] = {
    {"table", "header", "header",
     R"(CREATE TABLE header (
    field TEXT PRIMARY KEY,
    value INTEGER NOT NULL,
    checksum INTEGER NOT NULL
) STRICT, WITHOUT ROWID)"},
    {"table", "objects", "objects",
     R"(CREATE TABLE objects (
    handle INTEGER PRIMARY KEY CHECK (handle > 0),
    class TEXT NOT NULL,
    owner INTEGER REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    owned INTEGER NOT NULL,
    owned_digest INTEGER NOT NULL,
    details INTEGER NOT NULL,
    details_digest INTEGER NOT NULL,
    checksum INTEGER NOT NULL
) STRICT)"},
    {"index", "objects_by_owner", "objects", "CREATE INDEX objects_by_owner ON objects (owner)"},
    {"table", "entries", "entries",
     R"(CREATE TABLE entries (
    dictionary INTEGER NOT NULL REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    key ANY NOT NULL,
    object INTEGER NOT NULL UNIQUE REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    checksum INTEGER NOT NULL,
    PRIMARY KEY (dictionary, key)
) STRICT, WITHOUT ROWID)"},
    {"index", "sqlite_autoindex_entries_1", "entries", ""},
    {"table", "records", "records",
     R"(CREATE TABLE records (
    object INTEGER PRIMARY KEY REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    symbol_table INTEGER NOT NULL REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    checksum INTEGER NOT NULL
) STRICT)"},
    {"index", "records_by_table", "records", "CREATE INDEX records_by_table ON records (symbol_table)"},
    {"table", "fields", "fields",
     R"(CREATE TABLE fields (
    object INTEGER NOT NULL REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    field TEXT NOT NULL,
    value ANY,
    target INTEGER REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    checksum INTEGER NOT NULL,
    UNIQUE (object, field),
    CHECK ((value IS NULL) <> (target IS NULL))
) STRICT)"},
    {"index", "sqlite_autoindex_fields_1", "fields", ""},
    {"index", "fields_by_target", "fields",
     "CREATE INDEX fields_by_target ON fields (target) WHERE target IS NOT NULL"},
    {"table", "resbufs", "resbufs",
     R"(CREATE TABLE resbufs (
    object INTEGER NOT NULL REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    position INTEGER NOT NULL,
    code INTEGER NOT NULL,
    value ANY NOT NULL,
    checksum INTEGER NOT NULL,
    UNIQUE (object, position)
) STRICT)"},
    {"index", "sqlite_autoindex_resbufs_1", "resbufs", ""},
    {"table", "extended_data", "extended_data",
     R"(CREATE TABLE extended_data (
    object INTEGER NOT NULL REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    application INTEGER NOT NULL REFERENCES objects DEFERRABLE INITIALLY DEFERRED,
    position INTEGER NOT NULL,
    code INTEGER NOT NULL,
    value ANY NOT NULL,
    checksum INTEGER NOT NULL,
    UNIQUE (object, application, position)
) STRICT)"},
    {"index", "sqlite_autoindex_extended_data_1", "extended_data", ""},
    {"index", "extended_data_by_application", "extended_data",
     "CREATE INDEX extended_data_by_application ON extended_data (application)"},
};

/// What the schema says of each table and index, by name.
using Definitions = std::map<std::string, std::string>;

Definitions readDefinitions(SQLite::Database& database)
{
    Definitions definitions;
    SQLite::Statement query(database,
                            "SELECT name, type || ' of ' || tbl_name || ': ' || coalesce(sql, '') FROM sqlite_schema");
    while (query.executeStep())
        definitions.emplace(query.getColumn(0).getString(), query.getColumn(1).getString());
    return definitions;
}

const Definitions& expectedDefinitions()
{
    static const Definitions expected = [] {
        Definitions definitions;
        for (const SchemaRow& row : kSchema)
            definitions.emplace(row.name, std::string(row.type) + " of " + row.table + ": " + row.sql);
        return definitions;
    }();
    return expected;
}

} // namespace

void create(SQLite::Database& database)
{
    for (const SchemaRow& row : kSchema)
        database.exec(row.sql);
    database.exec("PRAGMA application_id = " + std::to_string(kApplicationId));
    database.exec("PRAGMA user_version = " + std::to_string(kFormat));
}

void require(SQLite::Database& database)
{
    const Definitions found = readDefinitions(database);
    for (const auto& [name, definition] : expectedDefinitions()) {
        const auto same = found.find(name);
        if (same == found.end())
            throwDamage(name + " is missing from its schema");
        if (same->second != definition)
            throwDamage(name + " is not as its schema must be");
    }
    for (const auto& [name, definition] : found) {
        if (!expectedDefinitions().contains(name))
            throwDamage(truncateForMessage(name) + " is not part of its schema");
    }
}

} // namespace Embedded::DrawingSchema
