#include "embedded/spatial_reference/catalog/catalog_database.h"

#include <sqlite3.h>

#include <memory>
#include <optional>
#include <vector>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

struct SqliteRelease {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    // The result repeats that of sqlite3_step.
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, SqliteRelease>;

Error unavailable(std::string message, std::string path = {})
{
    return {statusCatalogUnavailable, std::move(message), std::move(path)};
}

Error notEnoughMemory(std::string path)
{
    return {statusOutOfMemory, "not enough memory to read it", std::move(path)};
}

/// A database file that is open for reading.
class Database {
public:
    explicit Database(std::string path) : path_(std::move(path))
    {
        sqlite3* opened = nullptr;
        openResult_ = sqlite3_open_v2(path_.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
        database_.reset(opened);
    }

    const std::string& path() const { return path_; }
    bool isOpen() const { return openResult_ == SQLITE_OK; }

    /// The first column of each row.
    Expected<std::vector<std::string>> query(const char* sql, const std::vector<std::string>& values = {}) const
    {
        if (openResult_ != SQLITE_OK)
            return error(openResult_);
        sqlite3_stmt* prepared = nullptr;
        const int result = sqlite3_prepare_v2(database_.get(), sql, -1, &prepared, nullptr);
        const Statement statement(prepared);
        if (result != SQLITE_OK)
            return error(result);
        for (std::size_t index = 0; index < values.size(); ++index) {
            const int bound =
                sqlite3_bind_text(prepared, static_cast<int>(index) + 1, values[index].c_str(), -1, nullptr);
            if (bound != SQLITE_OK)
                return error(bound);
        }
        return readRows(prepared);
    }

private:
    Expected<std::vector<std::string>> readRows(sqlite3_stmt* statement) const
    {
        std::vector<std::string> rows;
        int result = sqlite3_step(statement);
        for (; result == SQLITE_ROW; result = sqlite3_step(statement)) {
            const unsigned char* text = sqlite3_column_text(statement, 0);
            rows.emplace_back(text ? reinterpret_cast<const char*>(text) : "");
        }
        if (result != SQLITE_DONE)
            return error(result);
        return rows;
    }

    tl::unexpected<Error> error(int result) const
    {
        if (result == SQLITE_NOMEM)
            return failure(notEnoughMemory(path_));
        return failure(unavailable(database_ ? sqlite3_errmsg(database_.get()) : sqlite3_errstr(result), path_));
    }

    std::string path_;
    std::unique_ptr<sqlite3, SqliteRelease> database_;
    int openResult_ = SQLITE_OK;
};

/// The database that PROJ has open. It stays open here too, since every code that only a drawing has leads to a query.
/// Opening it fails where memory is short, and is tried again then.
const Database& openedDatabase()
{
    static std::optional<Database> database;
    if (!database || !database->isOpen())
        database.emplace(proj_context_get_database_path(projContext()));
    return *database;
}

/// The path of the first proj.db in the folders that PROJ searches. Called when PROJ has opened none; empty when no
/// folder holds one.
std::string unopenedDatabase()
{
    for (const std::string& folder : catalogFolders()) {
        const std::string path = folder + "/proj.db";
        if (fileKind(pathFromUtf8(path)))
            return path;
    }
    return {};
}

std::string joinedFolders()
{
    std::string joined;
    for (const std::string& folder : catalogFolders())
        joined += (joined.empty() ? "" : ", ") + folder;
    return joined;
}

/// SQLite's check reports a page as damaged when there is no memory to read it. The report then ends with this code.
constexpr std::string_view kOutOfMemory = "error code=7";
static_assert(SQLITE_NOMEM == 7);

/// SQLite puts the name of the database on a line of its own before what is wrong in it.
std::string firstDamage(const std::vector<std::string>& rows)
{
    constexpr std::string_view kEndOfName = "***\n";
    const std::string damage = rows.empty() ? std::string() : rows.front();
    const std::size_t name = damage.find(kEndOfName);
    return name == std::string::npos ? damage : damage.substr(name + kEndOfName.size());
}

/// A LIKE pattern for the names of the tables that hold definitions of the type.
const char* tablePattern(DefinitionType type)
{
    switch (type) {
    case DefinitionType::coordinateReferenceSystem:
        return "%crs";
    case DefinitionType::datum:
        return "%datum";
    case DefinitionType::ellipsoid:
        return "ellipsoid";
    case DefinitionType::transformation:
        return "%transformation";
    case DefinitionType::path:
        return "concatenated_operation";
    }
    return "";
}

} // namespace

Expected<void> checkCatalogIsOpen()
{
    if (isCatalogAvailable())
        return {};
    const std::string path = unopenedDatabase();
    if (path.empty())
        return failure(unavailable("there is no proj.db in " + joinedFolders()));
    if (fileKind(pathFromUtf8(path)) != FileKind::regular)
        return failure(unavailable("not a regular file", path));
    const auto rows = Database(path).query("SELECT value FROM metadata");
    return failure(rows ? unavailable("PROJ cannot use it", path) : rows.error());
}

Error explainMissingCode(const CatalogCode& code, DefinitionType type)
{
    if (const auto open = checkCatalogIsOpen(); !open)
        return open.error();
    const auto rows =
        openedDatabase().query("SELECT 1 FROM object_view WHERE auth_name = ?1 AND code = ?2 AND table_name LIKE ?3",
                               {code.authority, code.code, tablePattern(type)});
    if (!rows)
        return rows.error();
    if (!rows->empty() && type <= DefinitionType::ellipsoid)
        return unavailable("PROJ cannot read " + code.text() + ", which is there", openedDatabase().path());
    return notInCatalog();
}

Error explainMissingName(const std::string& name)
{
    if (const auto open = checkCatalogIsOpen(); !open)
        return open.error();
    const auto rows = openedDatabase().query("SELECT 1 FROM coordinate_operation_view WHERE name = ?1", {name});
    return rows ? notInCatalog() : rows.error();
}

Error explainMissingAuthority()
{
    if (const auto open = checkCatalogIsOpen(); !open)
        return open.error();
    if (!catalogAuthorities().empty())
        return notInCatalog();
    const auto rows = openedDatabase().query("SELECT auth_name FROM authority_list");
    return rows ? unavailable("PROJ cannot read its authorities", openedDatabase().path()) : rows.error();
}

Error notInCatalog()
{
    return {statusNotFound, "the catalog has no such definition", {}};
}

Expected<void> checkAliases()
{
    if (auto open = checkCatalogIsOpen(); !open)
        return open;
    const auto rows = openedDatabase().query("SELECT count(alt_name || source) FROM alias_name");
    return rows.map([](const auto&) {});
}

Expected<void> checkWholeCatalog()
{
    if (auto open = checkCatalogIsOpen(); !open)
        return open;
    const Database database(openedDatabase().path()); // nothing of it has been read into memory yet
    const auto rows = database.query("PRAGMA integrity_check(1)");
    if (!rows)
        return failure(rows.error());
    if (rows->size() == 1 && rows->front() == "ok")
        return {};
    const std::string damage = firstDamage(*rows);
    return failure(damage.ends_with(kOutOfMemory) ? notEnoughMemory(database.path())
                                                  : unavailable("damaged: " + damage, database.path()));
}

CatalogReadCheck::CatalogReadCheck()
{
    forgetReadFailure();
}

Expected<void> CatalogReadCheck::finish() const
{
    const ReadFailure kind = readFailure();
    if (kind == ReadFailure::none)
        return checkCatalogIsOpen();
    if (auto whole = checkWholeCatalog(); !whole)
        return whole;
    const std::string& path = openedDatabase().path();
    return failure(kind == ReadFailure::memory ? notEnoughMemory(path)
                                               : unavailable("PROJ cannot read all of it", path));
}

} // namespace Embedded
