// Systems and drawings that a map shows by their areas of use.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orvelcs/output/map/map_extent.h"

namespace Orvelcs {

struct MappedSystem {
    std::optional<std::string> file; // of a drawing or of a text
    std::optional<std::string> code;
    std::string name;
    bool deprecated = false;
    std::optional<std::string> areaName;
    std::optional<GeographicBounds> bounds; // nothing where the system has no area of use
    std::optional<int> number;              // on the map; of a system with an area of use
};

/// The systems with one area of use.
struct MappedArea {
    int number = 0;
    GeographicBounds bounds;
    std::vector<const MappedSystem*> systems; // at least one

    bool isDeprecated() const; // all of its systems are
};

/// Numbers the areas from 1 in the order of the systems. Systems with equal areas get one number.
void numberAreas(std::vector<MappedSystem>& systems);

/// The areas in the order of their numbers, of systems that are numbered.
std::vector<MappedArea> areasOf(const std::vector<MappedSystem>& systems);

} // namespace Orvelcs
