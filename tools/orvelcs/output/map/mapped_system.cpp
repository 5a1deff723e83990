#include "orvelcs/output/map/mapped_system.h"

#include <algorithm>
#include <array>
#include <map>

namespace Orvelcs {

bool MappedArea::isDeprecated() const
{
    return std::ranges::all_of(systems, [](const MappedSystem* system) { return system->deprecated; });
}

void numberAreas(std::vector<MappedSystem>& systems)
{
    std::map<std::array<double, 4>, int> numbers;
    for (MappedSystem& system : systems) {
        if (!system.bounds)
            continue;
        const auto& [west, south, east, north] = *system.bounds;
        const int next = static_cast<int>(numbers.size()) + 1;
        system.number = numbers.try_emplace({west, south, east, north}, next).first->second;
    }
}

std::vector<MappedArea> areasOf(const std::vector<MappedSystem>& systems)
{
    std::map<int, MappedArea> areas;
    for (const MappedSystem& system : systems) {
        if (!system.number || !system.bounds)
            continue;
        MappedArea& area = areas[*system.number];
        area.number = *system.number;
        area.bounds = *system.bounds;
        area.systems.push_back(&system);
    }
    std::vector<MappedArea> list;
    for (auto& [number, area] : areas)
        list.push_back(std::move(area));
    return list;
}

} // namespace Orvelcs
