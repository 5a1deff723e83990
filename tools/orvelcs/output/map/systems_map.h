// The picture of where systems and drawings are: a map of their areas of use, and the list of what the numbers on it
// mean.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/output/map/mapped_system.h"

namespace Orvelcs {

/// An SVG that stands alone. The systems are numbered; at least one. The same systems give the same bytes.
std::string drawSystemsMap(const std::vector<MappedSystem>& systems);

} // namespace Orvelcs
