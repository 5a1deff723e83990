// Reads angles in degrees, minutes and seconds.
#pragma once

#include <optional>
#include <string_view>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"

namespace Orvelcs {

struct Angle {
    double degrees = 0;
    Embedded::AxisDirection hemisphere = Embedded::AxisDirection::other; // other where no letter says it
};

/// Reads degrees with minutes, seconds or a hemisphere: 52d30'15.5", 52°30'15.5"N, -52:30:15.5, N 52.5. Only the last
/// number may have a fraction, a sign and a hemisphere exclude each other, and blanks may stand between the parts.
/// Returns nothing for any other text.
std::optional<Angle> parseAngle(std::string_view text);

/// The angle in the axis's unit, as the axis counts it; nothing if the hemisphere is not one of this axis.
std::optional<double> angleOnAxis(const Angle& angle, const Embedded::AxisUnit& axis);

} // namespace Orvelcs
