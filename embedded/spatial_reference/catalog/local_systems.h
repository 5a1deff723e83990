// Plane systems for building sites, in the common units. They are not tied to the Earth, and PROJ's database lacks
// them.
#pragma once

#include <string_view>
#include <vector>

#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

inline constexpr std::string_view kLocalAuthority = "LOCAL";

/// Their PROJJSON, in catalog order.
const std::vector<Projjson>& localSystems();

/// The PROJJSON of LOCAL:`code`, or null.
const Projjson* findLocalSystem(std::string_view code);

} // namespace Embedded
