// The page of a map of systems: the map with the list beside it.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/output/map/mapped_system.h"

namespace Orvelcs {

/// A number on the map leads to its entry in the list, and back.
std::string writeSystemsPage(const std::vector<MappedSystem>& systems);

} // namespace Orvelcs
