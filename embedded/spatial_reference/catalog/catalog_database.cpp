#include "embedded/spatial_reference/catalog/catalog_database.h"

#include <sqlite3.h>

#include <memory>
#include <vector>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

struct SqliteRelease {
    void operator()(sqlite3* database) const { static_cast<void>(sqlite3_close(database)); } // no statement is left
    void operator()(sqlite3_stmt* statement) const { static_cast<void>(sqlite3_finalize(statement)); } // as step said
};
using Statement = std::unique_ptr<sqlite3_stmt, SqliteRelease>;

/// The answer to a query: SQLite's result code, its message if that is an error, and the first column of each row.
struct Answer {
    int result = SQLITE_DONE;
    std::string message{};
    std::vector<std::string> rows{};

    bool isError() const { return result != SQLITE_DONE; }
};

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

    Answer ask(const char* sql, const std::vector<std::string>& values = {}) const
    {
        if (openResult_ != SQLITE_OK)
            return failed(openResult_);
        sqlite3_stmt* prepared = nullptr;
        const int result = sqlite3_prepare_v2(database_.get(), sql, -1, &prepared, nullptr);
        const Statement statement(prepared);
        if (result != SQLITE_OK)
            return failed(result);
        for (std::size_t index = 0; index < values.size(); ++index) {
            const int bound =
                sqlite3_bind_text(prepared, static_cast<int>(index) + 1, values[index].c_str(), -1, nullptr);
            if (bound != SQLITE_OK)
                return failed(bound);
        }
        return rowsOf(prepared);
    }

private:
    Answer rowsOf(sqlite3_stmt* statement) const
    {
        Answer answer;
        int result = sqlite3_step(statement);
        for (; result == SQLITE_ROW; result = sqlite3_step(statement)) {
            const unsigned char* text = sqlite3_column_text(statement, 0);
            answer.rows.emplace_back(text ? reinterpret_cast<const char*>(text) : "");
        }
        return result == SQLITE_DONE ? answer : failed(result);
    }
    Answer failed(int result) const
    {
        return {result, database_ ? sqlite3_errmsg(database_.get()) : sqlite3_errstr(result), {}};
    }

    std::string path_;
    std::unique_ptr<sqlite3, SqliteRelease> database_;
    int openResult_ = SQLITE_OK;
};

CatalogFault unavailable(std::string cause)
{
    return {statusCatalogUnavailable, std::move(cause)};
}

CatalogFault outOfMemory(const std::string& path)
{
    return {statusOutOfMemory, path + ": not enough memory to read it"};
}

CatalogFault faultOf(const Database& database, const Answer& answer)
{
    if (answer.result == SQLITE_NOMEM)
        return outOfMemory(database.path());
    return unavailable(database.path() + ": " + answer.message);
}

/// The database that PROJ has opened stays open here too: every code that a drawing has of its own is asked for.
const Database& openedDatabase()
{
    static const Database database(proj_context_get_database_path(projContext()));
    return database;
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
const char* tablesOf(DefinitionType type)
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

std::optional<CatalogFault> faultOfOpening()
{
    if (isCatalogAvailable())
        return std::nullopt;
    const std::string path = unopenedDatabase();
    if (path.empty())
        return unavailable("there is no proj.db in " + joinedFolders());
    if (fileKind(pathFromUtf8(path)) != FileKind::regular)
        return unavailable(path + ": not a regular file");
    const Database database(path);
    const Answer answer = database.ask("SELECT value FROM metadata");
    return answer.isError() ? faultOf(database, answer) : unavailable(path + ": PROJ cannot use it");
}

std::optional<CatalogFault> faultBehindMissingCode(const CatalogCode& code, DefinitionType type)
{
    if (auto fault = faultOfOpening())
        return fault;
    const Database& database = openedDatabase();
    const Answer answer =
        database.ask("SELECT 1 FROM object_view WHERE auth_name = ?1 AND code = ?2 AND table_name LIKE ?3",
                     {code.authority, code.code, tablesOf(type)});
    if (answer.isError())
        return faultOf(database, answer);
    if (!answer.rows.empty() && type <= DefinitionType::ellipsoid)
        return unavailable(database.path() + ": PROJ cannot read " + code.text() + ", which is there");
    return std::nullopt;
}

std::optional<CatalogFault> faultBehindMissingName(const std::string& name)
{
    if (auto fault = faultOfOpening())
        return fault;
    const Answer answer = openedDatabase().ask("SELECT 1 FROM coordinate_operation_view WHERE name = ?1", {name});
    return answer.isError() ? std::optional(faultOf(openedDatabase(), answer)) : std::nullopt;
}

std::optional<CatalogFault> faultBehindMissingAuthority()
{
    if (auto fault = faultOfOpening())
        return fault;
    if (!catalogAuthorities().empty())
        return std::nullopt;
    const Answer answer = openedDatabase().ask("SELECT auth_name FROM authority_list");
    return answer.isError() ? faultOf(openedDatabase(), answer)
                            : unavailable(openedDatabase().path() + ": PROJ cannot read its authorities");
}

std::optional<CatalogFault> faultOfAliases()
{
    if (auto fault = faultOfOpening())
        return fault;
    const Answer answer = openedDatabase().ask("SELECT count(alt_name || source) FROM alias_name");
    return answer.isError() ? std::optional(faultOf(openedDatabase(), answer)) : std::nullopt;
}

std::optional<CatalogFault> faultOfWholeCatalog()
{
    if (auto fault = faultOfOpening())
        return fault;
    const Database database(openedDatabase().path()); // nothing of it has been read into memory yet
    const Answer answer = database.ask("PRAGMA integrity_check(1)");
    if (answer.isError())
        return faultOf(database, answer);
    if (answer.rows.size() == 1 && answer.rows.front() == "ok")
        return std::nullopt;
    const std::string damage = firstDamage(answer.rows);
    return damage.ends_with(kOutOfMemory) ? outOfMemory(database.path())
                                          : unavailable(database.path() + ": damaged: " + damage);
}

std::optional<CatalogFault> faultOfLastAnswer()
{
    const ReadFailure failure = takeReadFailure();
    if (failure == ReadFailure::none)
        return faultOfOpening();
    if (auto fault = faultOfWholeCatalog())
        return fault;
    const std::string& path = openedDatabase().path();
    return failure == ReadFailure::memory ? outOfMemory(path) : unavailable(path + ": PROJ cannot read all of it");
}

Status statusOfMissing(const std::optional<CatalogFault>& fault)
{
    return fault ? fault->status : statusNotFound;
}

} // namespace Embedded
