// Conversions between systems of one datum: map projection, axes, units, prime meridian.
#pragma once

#include <optional>

#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

struct DatumPreservingConversion {
    ProjObject operation; // null: the systems are one and nothing is to be done
    bool changesPrimeMeridian = false;
};

/// Nothing when only a change of datum leads from one to the other. The catalog has a datum of its own for each prime
/// meridian of the same triangulation; the longitude rotation between two such is no change of datum here, provided
/// that it is the difference of the meridians.
std::optional<DatumPreservingConversion> datumPreservingConversion(const PJ* from, const PJ* to);

} // namespace Embedded
