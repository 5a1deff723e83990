// Systems and operations of the catalog, and why it has none: with the nearest codes, or with what is wrong with the
// catalog.
#pragma once

#include <optional>
#include <string>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/output/system_description.h"

namespace Orvelcs {

/// The code of a system that an argument gives as AUTHORITY:CODE, as a name such as urn:ogc:def:crs:EPSG::25832, or as
/// a number alone. Throws Failure for wrong usage when it is empty or not UTF-8.
std::wstring codeArgument(const std::string& argument, const std::string& text);

/// "EPSG:25832 (ETRS89 / UTM zone 32N)".
std::string describeEntry(const Embedded::CatalogEntry& entry);

/// "; the nearest are EPSG:25832 (ETRS89 / UTM zone 32N), ..." for a misspelt code, number or name; empty when there is
/// none.
std::string nearestCodesClause(const std::wstring& code);

/// The same for the name of a path or a transformation.
std::string nearestOperationsClause(const std::wstring& name,
                                    Zentara::Infrastructure::SpatialReference::TransformationKind kind);
/// The nearest transformations, or the nearest paths when there is no transformation.
std::string nearestOperationsClause(const std::wstring& name);

/// Throws Failure (nothing found) for an authority that the catalog does not have.
void checkAuthority(const std::wstring& authority);

/// "the catalog has no EPSG:2583; the nearest are …", or that it is the code of a vertical system.
std::string describeMissingCode(const std::wstring& code);

/// The Failure of an unknown code, with the nearest codes that exist; or that it is the code of a vertical system.
Failure noSuchCode(const std::wstring& code, ExitStatus status = ExitStatus::nothingFound);

/// Why a load ended with a status other than statusOk and statusNotFound: "the catalog cannot be read: there is no
/// proj.db in /usr/share/proj: statusCatalogUnavailable (46)".
std::string describeLoadFailure(const std::wstring& code, Zentara::Infrastructure::SpatialReference::Status status);

/// Returns whether the catalog was asked and does not have the code.
bool catalogLacks(const std::wstring& code);

/// Returns whether the catalog's system of the code is equivalent to this one; nothing when no system of the code can
/// be loaded.
std::optional<bool> catalogAgrees(const std::wstring& code, const System& system);

/// The catalog's entry; nothing when the catalog was asked and does not have the code. Throws Failure when it could not
/// be asked.
std::optional<Embedded::CatalogEntry> catalogEntry(const std::wstring& code);

/// Throws Failure: noSuchCode, with the status `unknownCode`, or why the system cannot be loaded.
SystemHolder systemFromCatalog(const std::wstring& code, ExitStatus unknownCode = ExitStatus::nothingFound);

/// The refusal of an operation, with the nearest names of operations when its name is unknown. An unknown code of a
/// system is named with the nearest codes and ends the command with `unknownCode`.
Failure operationFailure(const Embedded::Error& error, ExitStatus unknownCode);

} // namespace Orvelcs
