// Plane systems that are not tied to the Earth, which PROJ's database lacks: site grids in the common units.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

inline constexpr std::string_view kLocalAuthority = "LOCAL";

/// Their documents, in catalog order.
const std::vector<Projjson>& localSystems();

/// The document of LOCAL:`code`, or null.
const Projjson* findLocalSystem(std::string_view code);

} // namespace Embedded
