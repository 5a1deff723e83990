// Points as lines of text, whatever the locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/coordinate_operations.h"

namespace Orvelcs {

/// Whether a line holds nothing, or a comment after "#".
bool isBlankOrComment(std::string_view line);

/// "x y" or "x y z", separated by blanks and tabs; nothing for anything else and for numbers that are not finite.
std::optional<Embedded::CoordinatePoint> pointFromLine(std::string_view line);
/// What a line holds instead of a point: "expected 2 or 3 numbers, found 4".
std::string describeLineWithoutPoint(std::string_view line);

/// How many decimals tell a tenth of a nanodegree, or a micrometre, in each axis: ten in degrees, six in metres.
std::vector<int> decimalsFor(const std::vector<Embedded::AxisUnit>& axes);

/// The point's two or three numbers with so many decimals; JSON numbers, too.
std::vector<std::string> numbersOf(const Embedded::CoordinatePoint& point, const std::vector<int>& decimals);

} // namespace Orvelcs
