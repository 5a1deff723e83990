// Queries PROJ's database through SQLite to find out why PROJ gave no object: the database lacks it, the database is
// damaged, or there was not enough memory. PROJ's own answer is the same in all three cases.
#pragma once

#include <string>

#include "embedded/base/error.h"
#include "embedded/spatial_reference/projjson/catalog_code.h"
#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Embedded {

// Every Error has statusNotFound, statusCatalogUnavailable or statusOutOfMemory. Its place is the path of the database;
// it is empty for a definition that is not found and when there is no database.

/// Checks whether PROJ has its database open.
Expected<void> checkCatalogIsOpen();

/// Returns whether the database has anything under the authority in this spelling. False when it cannot be read.
bool hasAuthority(const std::string& authority);

/// Why PROJ gives no object for the code, whose authority is spelled as in the catalog. statusNotFound when the
/// database lacks the code as well, and for an operation that the database has, since PROJ cannot make all of them.
Error explainMissingCode(const CatalogCode& code, DefinitionType type);
/// Why PROJ gives no operation for the name. statusNotFound when the database can be read.
Error explainMissingName(const std::string& name);
/// Why PROJ does not list an authority. statusNotFound when PROJ lists any authority at all.
Error explainMissingAuthority();
/// The Error of a definition that a readable catalog does not have.
Error notInCatalog();

/// Checks whether the table of alternative names can be read. PROJ ends the process when it compares two objects and
/// cannot read that table.
Expected<void> checkAliases();

/// Reads the whole database and compares its indexes with its tables. The Error is about the first damage. This takes
/// some tenths of a second.
Expected<void> checkWholeCatalog();

/// Finds out whether PROJ could read all of its database while a query ran. PROJ's lists are shorter, or empty, when it
/// could not.
class CatalogReadCheck {
public:
    /// Begins the check; call before the query.
    CatalogReadCheck();
    /// Checks whether the answers since then are complete.
    Expected<void> finish() const;
};

} // namespace Embedded
