#include "orvelcs/drawing/place_filter.h"

#include <algorithm>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"
#include "embedded/spatial_reference/catalog/catalog_words.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/suggestion.h"

namespace Orvelcs {
namespace {

using Areas = std::vector<Embedded::CatalogAreas>;

bool hasWords(const Embedded::CatalogArea& area, const std::wstring& words)
{
    const std::wstring name = Embedded::searchForm(area.name);
    const std::wstring shortName = Embedded::searchForm(area.shortName);
    return std::ranges::all_of(Embedded::splitAtBlanks(Embedded::searchForm(words)), [&](const std::wstring& word) {
        return std::min(Embedded::matchWord(name, word), Embedded::matchWord(shortName, word)) <=
               Embedded::WordMatch::beginning;
    });
}

std::string nearestAreasClause(const Areas& areas, const std::wstring& words)
{
    constexpr std::size_t kMost = 5;
    Embedded::WordCorrection correction;
    for (const auto& ofSystem : areas)
        for (const auto& area : ofSystem)
            correction.learn(area->name);
    std::vector<std::string> names;
    for (const std::wstring& corrected : correction.correct(words, kMost))
        names.push_back(Embedded::utf8FromWide(corrected));
    return nearestClause(names);
}

Failure nothingThere(const Areas& areas, const PlaceFilter& filter)
{
    const std::string systems = fmt::format("{} {}", areas.size(), areas.size() == 1 ? "system" : "systems");
    if (filter.words.empty())
        return Failure("--" + std::string(filter.at ? "at" : "bbox"),
                       fmt::format("the area of use of none of the {} that match contains it", systems),
                       ExitStatus::nothingFound);
    return Failure("--area",
                   fmt::format("the area of use of none of the {} that match {}{}", systems,
                               filter.at || filter.bbox ? "fits" : "has these words",
                               nearestAreasClause(areas, filter.words)),
                   ExitStatus::nothingFound);
}

} // namespace

bool PlaceFilter::accepts(const Embedded::CatalogArea& area) const
{
    for (const std::optional<Embedded::GeographicBounds>& wanted : {at, bbox})
        if (wanted && (!area.bounds || !area.bounds->contains(*wanted)))
            return false;
    return words.empty() || hasWords(area, words);
}

std::vector<PlacedSystem> placedSystems(const std::vector<Embedded::CatalogEntry>& entries, const PlaceFilter& filter)
{
    const Embedded::Expected<Areas> areas = Embedded::areasOfUse(entries);
    if (!areas)
        throw Failure("areas of use", Embedded::unreadableCatalogMessage(areas.error()));
    std::vector<PlacedSystem> systems;
    for (std::size_t index = 0; index < entries.size(); ++index) {
        const auto& ofSystem = (*areas)[index];
        const auto accepted = std::ranges::find_if(ofSystem, [&](const auto& area) { return filter.accepts(*area); });
        if (accepted != ofSystem.end())
            systems.push_back({entries[index], *accepted});
        else if (filter.isEmpty())
            systems.push_back({entries[index], nullptr});
    }
    if (systems.empty())
        throw nothingThere(*areas, filter);
    return systems;
}

} // namespace Orvelcs
