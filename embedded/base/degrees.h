// Degrees and radians.
#pragma once

#include <numbers>

namespace Embedded {

inline constexpr double kRadiansPerDegree = std::numbers::pi / 180;
inline constexpr double kDegreesPerRadian = 180 / std::numbers::pi;

} // namespace Embedded
