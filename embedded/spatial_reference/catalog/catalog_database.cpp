#include "embedded/spatial_reference/catalog/catalog_database.h"

#include <sqlite3.h>

#include <vector>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/spatial_reference/catalog/catalog_connection.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

Error unavailable(std::string message, std::string path = {})
{
    return {statusCatalogUnavailable, std::move(message), std::move(path)};
}

/// The path of the first proj.db in the folders that PROJ searches. Called when PROJ has opened none; empty when no
/// folder holds one.
std::string unopenedCatalog()
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

/// Stops at the first row of the authority, where the view authority_list reads all tables before it has any row.
constexpr const char* kIsAuthority = "SELECT 1 WHERE EXISTS (SELECT 1 FROM crs_view WHERE auth_name = ?1) "
                                     "OR EXISTS (SELECT 1 FROM coordinate_operation_view WHERE auth_name = ?1) "
                                     "OR EXISTS (SELECT 1 FROM geodetic_datum WHERE auth_name = ?1) "
                                     "OR EXISTS (SELECT 1 FROM vertical_datum WHERE auth_name = ?1) "
                                     "OR EXISTS (SELECT 1 FROM ellipsoid WHERE auth_name = ?1) "
                                     "OR EXISTS (SELECT 1 FROM prime_meridian WHERE auth_name = ?1) "
                                     "OR EXISTS (SELECT 1 FROM unit_of_measure WHERE auth_name = ?1)";

} // namespace

Expected<void> checkCatalogIsOpen()
{
    if (isCatalogAvailable())
        return {};
    const std::string path = unopenedCatalog();
    if (path.empty())
        return failure(unavailable("there is no proj.db in " + joinedFolders()));
    if (fileKind(pathFromUtf8(path)) != FileKind::regular)
        return failure(unavailable("not a regular file", path));
    const auto rows = CatalogConnection(path).query("SELECT value FROM metadata");
    return failure(rows ? unavailable("PROJ cannot use it", path) : rows.error());
}

bool hasAuthority(const std::string& authority)
{
    const auto rows = checkCatalogIsOpen().and_then([&] { return openedCatalog().query(kIsAuthority, {authority}); });
    return rows && !rows->empty();
}

Error explainMissingCode(const CatalogCode& code, DefinitionType type)
{
    if (const auto open = checkCatalogIsOpen(); !open)
        return open.error();
    const auto rows =
        openedCatalog().query("SELECT 1 FROM object_view WHERE auth_name = ?1 AND code = ?2 AND table_name LIKE ?3",
                              {code.authority, code.code, tablePattern(type)});
    if (!rows)
        return rows.error();
    if (!rows->empty() && type <= DefinitionType::ellipsoid)
        return unavailable("PROJ cannot read " + code.text() + ", which is there", openedCatalog().path());
    return notInCatalog();
}

Error explainMissingName(const std::string& name)
{
    if (const auto open = checkCatalogIsOpen(); !open)
        return open.error();
    const auto rows = openedCatalog().query("SELECT 1 FROM coordinate_operation_view WHERE name = ?1", {name});
    return rows ? notInCatalog() : rows.error();
}

Error explainMissingAuthority()
{
    if (const auto open = checkCatalogIsOpen(); !open)
        return open.error();
    if (!catalogAuthorities().empty())
        return notInCatalog();
    const auto rows = openedCatalog().query("SELECT auth_name FROM authority_list");
    return rows ? unavailable("PROJ cannot read its authorities", openedCatalog().path()) : rows.error();
}

Error notInCatalog()
{
    return {statusNotFound, "the catalog has no such definition", {}};
}

Expected<void> checkAliases()
{
    if (auto open = checkCatalogIsOpen(); !open)
        return open;
    const auto rows = openedCatalog().query("SELECT count(alt_name || source) FROM alias_name");
    return rows.map([](const auto&) {});
}

Expected<void> checkWholeCatalog()
{
    if (auto open = checkCatalogIsOpen(); !open)
        return open;
    const CatalogConnection database(openedCatalog().path()); // nothing of it has been read into memory yet
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
    const std::string& path = openedCatalog().path();
    return failure(kind == ReadFailure::memory ? notEnoughMemory(path)
                                               : unavailable("PROJ cannot read all of it", path));
}

} // namespace Embedded
