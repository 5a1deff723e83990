// Reads the systems that a map shows.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/cli/output.h"
#include "orvelcs/output/map/mapped_system.h"

namespace Orvelcs {

/// Reads each SYSTEM with its area of use and numbers the areas. Throws Failure: nothing found for a code that the
/// catalog does not have and for a drawing without a system.
std::vector<MappedSystem> readMappedSystems(const std::vector<std::string>& systems, const Output& output);

} // namespace Orvelcs
