#include "orvelcs/drawing/mapped_systems.h"

#include <algorithm>
#include <map>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_areas.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/system_argument.h"

namespace Orvelcs {
namespace {

/// A system, and its entry where the catalog has it. A definition of one's own has no area of use: it is stored
/// without.
struct ReadSystem {
    MappedSystem system;
    std::optional<Embedded::CatalogEntry> entry;
};

std::string textOf(const std::optional<std::wstring>& text)
{
    return oneLine(text.value_or(L""));
}

ReadSystem readFileSystem(const std::string& argument, const Output& output)
{
    const NamedSystem named = readSystem("SYSTEM", argument, output);
    const SystemDescription description = describe(named);
    ReadSystem read;
    read.system.file = oneLine(argument.substr(1));
    if (description.code)
        read.system.code = oneLine(*description.code);
    read.system.name = textOf(description.name);
    if (!named.code.empty())
        read.entry = catalogEntry(named.code);
    return read;
}

ReadSystem readCatalogSystem(const std::string& argument)
{
    const std::wstring code = wideArgument("SYSTEM", argument);
    ReadSystem read;
    read.entry = catalogEntry(code);
    if (!read.entry)
        throw noSuchCode(code);
    return read;
}

void useEntry(const Embedded::CatalogEntry& entry, const Embedded::CatalogAreas& areas, MappedSystem& system)
{
    system.code = oneLine(entry.code);
    system.name = oneLine(entry.name);
    system.deprecated = entry.deprecated;
    if (areas.empty())
        return;
    // The entry brings an area that is a name alone.
    const auto bounded = std::ranges::find_if(areas, [](const auto& area) { return area->bounds.has_value(); });
    const Embedded::CatalogArea& area = bounded == areas.end() ? *areas.front() : **bounded;
    system.areaName = oneLine(area.name);
    system.bounds = area.bounds;
}

void addCatalogAreas(std::vector<ReadSystem>& systems)
{
    std::vector<Embedded::CatalogEntry> entries; // each once
    std::map<std::wstring, std::size_t> indexes;
    for (const ReadSystem& read : systems)
        if (read.entry && indexes.try_emplace(read.entry->code, entries.size()).second)
            entries.push_back(*read.entry);
    const auto areas = Embedded::areasOfUse(entries);
    if (!areas)
        throw Failure("areas of use", Embedded::unreadableCatalogMessage(areas.error()));
    for (ReadSystem& read : systems)
        if (read.entry)
            useEntry(*read.entry, (*areas)[indexes.at(read.entry->code)], read.system);
}

} // namespace

std::vector<MappedSystem> readMappedSystems(const std::vector<std::string>& systems, const Output& output)
{
    std::vector<ReadSystem> read;
    for (const std::string& argument : systems)
        read.push_back(namesFile(argument) ? readFileSystem(argument, output) : readCatalogSystem(argument));
    addCatalogAreas(read);
    std::vector<MappedSystem> mapped;
    for (ReadSystem& system : read)
        mapped.push_back(std::move(system.system));
    numberAreas(mapped);
    return mapped;
}

} // namespace Orvelcs
