#include "orvelcs/drawing/system_search.h"

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/delayed_progress.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/catalog_lookup.h"

namespace Orvelcs {
namespace {

/// What the messages are about.
std::string subjectOf(const SystemSearch& search)
{
    return search.query.text.empty() ? "systems" : Embedded::utf8FromWide(search.query.text);
}

Failure nothingMatches(const SystemSearch& search)
{
    Embedded::CatalogQuery query = search.query;
    query.includesDeprecated = true;
    const std::vector<Embedded::CatalogEntry> deprecated = Embedded::searchCatalog(query);
    const std::string message =
        deprecated.empty()
            ? "nothing matches" + nearestCodesClause(query.text)
            : fmt::format("nothing matches but what is deprecated: --deprecated lists {}{}",
                          describeEntry(deprecated.front()),
                          deprecated.size() == 1 ? "" : fmt::format(" and {} more", deprecated.size() - 1));
    return Failure(subjectOf(search), message, ExitStatus::nothingFound);
}

} // namespace

std::vector<PlacedSystem> findSystems(const SystemSearch& search, const Output& output)
{
    const DelayedProgress progress(output, "searching the catalog");
    if (const auto check = Embedded::checkCatalogList(); !check) // first, or no authority would be known
        throw Failure(subjectOf(search), Embedded::unreadableCatalogMessage(check.error()));
    if (!search.query.authority.empty())
        checkAuthority(search.query.authority);
    std::vector<Embedded::CatalogEntry> entries = Embedded::searchCatalog(search.query);
    if (entries.empty())
        throw nothingMatches(search);
    if (search.place.isEmpty() && entries.size() > search.limit)
        entries.resize(search.limit); // spares the others the look at their areas
    std::vector<PlacedSystem> systems = placedSystems(entries, search.place);
    if (systems.size() > search.limit)
        systems.resize(search.limit);
    return systems;
}

} // namespace Orvelcs
