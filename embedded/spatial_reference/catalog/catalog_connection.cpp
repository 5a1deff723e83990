#include "embedded/spatial_reference/catalog/catalog_connection.h"

#include <sqlite3.h>

#include <cstdlib>
#include <sstream>
#include <utility>

#include "embedded/spatial_reference/projjson/proj_context.h"
#include "embedded/spatial_reference/projjson/shipped_catalog.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

/// The name under which SQLite has a database of the user's own, from 1.
std::string attachedName(std::size_t number)
{
    return "user" + std::to_string(number);
}

/// The name of a table or column between quotes.
std::string quoted(const std::string& name)
{
    std::string text = "\"";
    for (const char character : name)
        text.append(character == '"' ? 2 : 1, character);
    return text + '"';
}

std::vector<std::string> userDatabases()
{
    const char* paths = std::getenv("PROJ_AUX_DB"); // PROJ reads it itself
    std::istringstream stream(paths ? paths : "");
    std::vector<std::string> databases;
    for (std::string path; std::getline(stream, path, searchPathSeparator());)
        databases.push_back(path);
    return databases;
}

} // namespace

Error notEnoughMemory(std::string path)
{
    return {statusOutOfMemory, "not enough memory to read it", std::move(path)};
}

std::string_view CatalogRow::text(int column) const
{
    const unsigned char* text = sqlite3_column_text(statement_, column);
    const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement_, column));
    return text ? std::string_view(reinterpret_cast<const char*>(text), length) : std::string_view();
}

bool CatalogRow::isTrue(int column) const
{
    return sqlite3_column_int(statement_, column) != 0;
}

double CatalogRow::number(int column) const
{
    return sqlite3_column_double(statement_, column);
}

void CatalogConnection::Release::operator()(sqlite3* database) const
{
    sqlite3_close(database);
}

void CatalogConnection::Release::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement); // its result repeats that of sqlite3_step
}

CatalogConnection::CatalogConnection(std::string path) : path_(std::move(path))
{
    sqlite3* opened = nullptr;
    openResult_ = sqlite3_open_v2(path_.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
    database_.reset(opened);
}

bool CatalogConnection::isOpen() const
{
    return openResult_ == SQLITE_OK;
}

void CatalogConnection::addDatabases(const std::vector<std::string>& paths)
{
    std::size_t count = 0;
    for (const std::string& path : paths) {
        if (query("ATTACH DATABASE ?1 AS " + attachedName(count + 1), {path}))
            ++count;
    }
    const auto names = count > 0 ? query("SELECT name FROM main.sqlite_master WHERE type IN ('table', 'view') AND "
                                         "name NOT LIKE 'sqlite%'")
                                 : Expected<std::vector<std::string>>();
    for (const std::string& name : names.value_or(std::vector<std::string>()))
        uniteTables(name, count);
}

bool CatalogConnection::canSelect(const std::string& table, const std::string& columns) const
{
    return query("SELECT " + columns + " FROM " + table + " LIMIT 0").has_value();
}

/// Puts a view before the table of that name. A database without the table or its columns adds nothing to it.
void CatalogConnection::uniteTables(const std::string& name, std::size_t databases) const
{
    std::string columns;
    for (const std::string& column :
         query("SELECT name FROM pragma_table_info(?1, 'main')", {name}).value_or(std::vector<std::string>()))
        columns += (columns.empty() ? "" : ", ") + quoted(column);
    std::string rows = "SELECT " + columns + " FROM main." + quoted(name);
    for (std::size_t number = 1; number <= databases; ++number) {
        const std::string table = attachedName(number) + "." + quoted(name);
        if (canSelect(table, columns))
            rows += " UNION ALL SELECT " + columns + " FROM " + table;
    }
    static_cast<void>(query("CREATE TEMP VIEW " + quoted(name) + " AS " + rows)); // without it the table itself is read
}

auto CatalogConnection::prepare(const std::string& sql, const std::vector<std::string>& values) const
    -> Expected<Statement>
{
    if (!isOpen())
        return error(openResult_);
    sqlite3_stmt* prepared = nullptr;
    int result = sqlite3_prepare_v2(database_.get(), sql.c_str(), -1, &prepared, nullptr);
    Statement statement(prepared);
    int place = 0;
    for (const std::string& value : values) {
        if (result == SQLITE_OK)
            result = sqlite3_bind_text(prepared, ++place, value.c_str(), -1, nullptr);
    }
    if (result != SQLITE_OK)
        return error(result);
    return statement;
}

Expected<void> CatalogConnection::forEachRow(const std::string& sql, const std::vector<std::string>& values,
                                             const std::function<void(const CatalogRow&)>& read) const
{
    const auto statement = prepare(sql, values);
    if (!statement)
        return failure(statement.error());
    int result = sqlite3_step(statement->get());
    for (; result == SQLITE_ROW; result = sqlite3_step(statement->get()))
        read(CatalogRow(statement->get()));
    if (result != SQLITE_DONE)
        return error(result);
    return {};
}

Expected<std::vector<std::string>> CatalogConnection::query(const std::string& sql,
                                                            const std::vector<std::string>& values) const
{
    std::vector<std::string> rows;
    return forEachRow(sql, values, [&rows](const CatalogRow& row) { rows.emplace_back(row.text(0)); }).map([&rows] {
        return std::move(rows);
    });
}

tl::unexpected<Error> CatalogConnection::error(int result) const
{
    if (result == SQLITE_NOMEM)
        return failure(notEnoughMemory(path_));
    return failure(statusCatalogUnavailable, database_ ? sqlite3_errmsg(database_.get()) : sqlite3_errstr(result),
                   path_);
}

const CatalogConnection& openedCatalog()
{
    static std::unique_ptr<CatalogConnection>& catalog = *new std::unique_ptr<CatalogConnection>; // as with projContext
    if (!catalog || !catalog->isOpen()) { // opening it fails where memory is short, and is tried again then
        catalog = std::make_unique<CatalogConnection>(proj_context_get_database_path(projContext()));
        catalog->addDatabases(userDatabases());
    }
    return *catalog;
}

} // namespace Embedded
