// The catalog as a list, for programs in which a user looks for a system. The module does not need it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/base/error.h"
#include "platform/export.h"
#include "platform/spatial_reference/definition.h"

namespace Embedded {

/// One coordinate reference system of the catalog, as the catalog spells it.
struct CatalogEntry {
    std::wstring code; // AUTHORITY:CODE
    std::wstring name;
    Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemKind kind =
        Zentara::Infrastructure::SpatialReference::kindNotEarthReferenced;
    bool deprecated = false;
    std::wstring areaOfUse; // of findCatalogEntry; empty in the list, except for local systems
};

/// Every system that can be loaded, each once, including deprecated ones and excluding vertical ones. The list is read
/// on first use. It holds only the local systems, which are not of PROJ's database, when checkCatalogList fails.
ZSR_API const std::vector<CatalogEntry>& catalogEntries();
/// Checks whether the systems of PROJ's database could be listed.
ZSR_API Expected<void> checkCatalogList();

/// The entry of a system by its code. The Error has statusNotFound when the catalog can be read and does not have the
/// system, otherwise statusCatalogUnavailable or statusOutOfMemory.
ZSR_API Expected<CatalogEntry> findCatalogEntry(std::wstring_view code);
/// Checks whether the catalog can be read to look for the code, which may be missing. The Error is that of
/// findCatalogEntry.
ZSR_API Expected<void> checkCatalogFor(std::wstring_view code);
/// Reads PROJ's database whole. The Error says why it cannot be opened, or what the first damage is.
ZSR_API Expected<void> checkCatalog();
/// "the catalog cannot be read: " followed by the Error's place and message.
ZSR_API std::string unreadableCatalogMessage(const Error& error);

/// The codes that replace a deprecated one, the best first.
ZSR_API std::vector<std::wstring> replacementCodes(std::wstring_view code);

/// A transformation or path whose name fits several.
struct OperationCandidate {
    std::wstring code;
    std::wstring name;
};
ZSR_API std::vector<OperationCandidate> transformationCandidates(std::wstring_view name);
ZSR_API std::vector<OperationCandidate> pathCandidates(std::wstring_view name);

/// The path of PROJ's database; empty when it has none open.
ZSR_API std::string catalogPath();
/// The versions in use, such as "PROJ 9.1.1" and "EPSG v10.076".
ZSR_API std::string projVersion();
ZSR_API std::string catalogVersion();

/// The version of an authority's part of PROJ's database.
struct AuthorityVersion {
    std::string authority;
    std::optional<std::string> version; // the database has none for some
};
/// Every authority of PROJ's database, those with a version first. Empty when it cannot be read.
ZSR_API std::vector<AuthorityVersion> catalogVersions();

} // namespace Embedded
