// Queries PROJ's database through SQLite to find out why PROJ gave no object: the database lacks it, the database is
// damaged, or there was not enough memory. PROJ's own answer is the same in all three cases.
#pragma once

#include <optional>
#include <string>

#include "embedded/spatial_reference/projjson/catalog_code.h"
#include "embedded/spatial_reference/projjson/definition_data.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {

/// Why the catalog could not be asked.
struct CatalogFault {
    Zentara::Infrastructure::SpatialReference::Status status; // statusCatalogUnavailable or statusOutOfMemory
    std::string cause; // for a person, with the path of the database, or with the folders in which there is none
};

/// Why PROJ has no database open; nothing when it has one.
std::optional<CatalogFault> faultOfOpening();
/// Why PROJ gives no object for the code, whose authority is spelled as in the catalog. Nothing when the database lacks
/// the code as well. Nothing for an operation that the database has, since PROJ cannot make all of them.
std::optional<CatalogFault> faultBehindMissingCode(const CatalogCode& code, DefinitionType type);
/// Why PROJ gives no operation for the name. Nothing when the database can be read.
std::optional<CatalogFault> faultBehindMissingName(const std::string& name);
/// Why PROJ does not list an authority. Nothing when PROJ lists any authority at all.
std::optional<CatalogFault> faultBehindMissingAuthority();
/// Why the table of alternative names cannot be read; nothing when it can. PROJ ends the process when it compares two
/// objects and cannot read that table.
std::optional<CatalogFault> faultOfAliases();
/// Reads the whole database, compares its indexes with its tables, and returns the first fault. This takes some tenths
/// of a second.
std::optional<CatalogFault> faultOfWholeCatalog();

/// Why PROJ's last answer may be incomplete or empty. Nothing when PROJ could read all that it needed.
std::optional<CatalogFault> faultOfLastAnswer();

/// The fault's status; statusNotFound when there is no fault.
Zentara::Infrastructure::SpatialReference::Status statusOfMissing(const std::optional<CatalogFault>& fault);

} // namespace Embedded
