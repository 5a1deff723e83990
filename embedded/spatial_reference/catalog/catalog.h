// The catalog as a list: what a program shows when a user looks for a system. The module has no need of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"

namespace Embedded {

/// One coordinate reference system of the catalog, as the catalog spells it.
struct CatalogEntry {
    std::wstring code; // AUTHORITY:CODE
    std::wstring name;
    int kind = 0; // CoordinateReferenceSystemKind
    bool deprecated = false;
    std::wstring areaOfUse;
};

struct CatalogQuery {
    std::wstring text; // every word must occur in the code or the name, ignoring case
    std::optional<int> kind;
    std::wstring authority;  // empty: any
    bool deprecated = false; // whether deprecated systems are answered too
    std::size_t limit = 0;   // 0: all
};

/// Every system that can be loaded, each once, deprecated ones included, vertical-only ones excluded; read on first
/// use. Holds only the local systems, which are not of PROJ's database, when whyCatalogIsUnlisted has an answer.
ZSR_API const std::vector<CatalogEntry>& catalogEntries();
/// Exact code first, then exact name, then names that begin with the text, then the rest, each by authority and number.
ZSR_API std::vector<CatalogEntry> searchCatalog(const CatalogQuery& query);
/// For a system's code that the loader gives nothing for: why the catalog could not be asked for it. Nothing when it
/// was asked and does not have it.
ZSR_API std::optional<std::string> whyCatalogFails(std::wstring_view code);
/// Reads PROJ's database whole: why it cannot be opened, or the first damage that is found. Nothing for a sound one.
ZSR_API std::optional<std::string> checkCatalog();
/// Why PROJ could not list the systems of its database: it has none open, or cannot read it, for which it needs room
/// for a temporary file. Nothing when it has listed them.
ZSR_API std::optional<std::string> whyCatalogIsUnlisted();
/// "the catalog cannot be read: " followed by the cause.
ZSR_API std::string unreadableCatalogMessage(std::string_view cause);
/// The path of PROJ's database; empty when it has none open.
ZSR_API std::string catalogPath();

/// The entry of a code as the loader would find it, or nothing.
ZSR_API std::optional<CatalogEntry> findCatalogEntry(std::wstring_view code);
/// Codes that replace a deprecated one, best first.
ZSR_API std::vector<std::wstring> replacementsOf(std::wstring_view code);
/// The nearest codes that exist to one that does not (misspelt authority, missing authority, swapped digits), best
/// first, `limit` at most.
ZSR_API std::vector<CatalogEntry> suggestCodes(std::wstring_view code, std::size_t limit);

/// The names of the candidates for a transformation or path name that fits several, with their codes.
struct OperationCandidate {
    std::wstring code;
    std::wstring name;
};
ZSR_API std::vector<OperationCandidate> transformationCandidates(std::wstring_view name);
ZSR_API std::vector<OperationCandidate> pathCandidates(std::wstring_view name);

/// "PROJ 9.1.1" and "EPSG v10.076" of this run.
ZSR_API std::string projVersion();
ZSR_API std::string catalogVersion();

} // namespace Embedded
