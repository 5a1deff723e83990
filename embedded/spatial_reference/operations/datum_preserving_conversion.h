// Conversions between systems of one datum: map projection, axes, units, prime meridian.
#pragma once

#include <optional>

#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

struct DatumPreservingConversion {
    ProjObject operation; // null when the systems are equal
    bool changesPrimeMeridian = false;
};

/// Nothing when there is no conversion without a change of datum. The catalog has a datum of its own for each prime
/// meridian of the same triangulation. The longitude rotation between two of these does not count as a change of datum
/// if its angle is the difference of the meridians. Throws ErrorException when the catalog cannot be read.
std::optional<DatumPreservingConversion> datumPreservingConversion(const PJ* from, const PJ* to);

} // namespace Embedded
