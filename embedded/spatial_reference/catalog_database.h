// PROJ's database, asked through SQLite itself. PROJ answers alike, with nothing, what the database lacks, what is
// damaged and what there was no memory for.
#pragma once

#include <optional>
#include <string>

#include "embedded/spatial_reference/catalog_code.h"
#include "embedded/spatial_reference/definition_data.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {

/// Why the catalog could not be asked.
struct CatalogFault {
    Zentara::Infrastructure::SpatialReference::Status status; // statusCatalogUnavailable or statusOutOfMemory
    std::string cause; // for a person, with the path of the database, or with the folders in which there is none
};

/// Nothing when PROJ has opened its database.
std::optional<CatalogFault> faultOfOpening();
/// For a code, as the catalog spells its authority, that PROJ gives nothing for. Nothing when the database lacks it
/// too, and for an operation that is there, since PROJ cannot make all of them.
std::optional<CatalogFault> faultBehindMissingCode(const CatalogCode& code, DefinitionType type);
/// For the name of an operation that PROJ gives nothing for. Nothing when the database can be read.
std::optional<CatalogFault> faultBehindMissingName(const std::string& name);
/// For an authority that is not among those that PROJ reads. Nothing when PROJ reads any.
std::optional<CatalogFault> faultBehindMissingAuthority();
/// Of the other names of its objects. PROJ ends the process when it compares two objects and cannot read these.
std::optional<CatalogFault> faultOfAliases();
/// Reads the whole database and compares its indexes with its tables; takes some tenths of a second.
std::optional<CatalogFault> faultOfWholeCatalog();

/// Of an answer of PROJ's that may lack something, or all. Nothing when PROJ could read what it had to.
std::optional<CatalogFault> faultOfLastAnswer();

/// statusNotFound where there is no fault.
Zentara::Infrastructure::SpatialReference::Status statusOfMissing(const std::optional<CatalogFault>& fault);

} // namespace Embedded
