// Points as lines of text, whatever the locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"

namespace Orvelcs {

/// Whether a line holds nothing, or a comment after "#".
bool isBlankOrComment(std::string_view line);

/// "x y", "x y z" or "x y z epoch", separated by blanks and tabs; nothing for anything else and for numbers that are
/// not finite.
std::optional<Embedded::CoordinatePoint> pointFromLine(std::string_view line);
/// What a line holds instead of a point: "expected 2 to 4 numbers, found 5".
std::string describeLineWithoutPoint(std::string_view line);

/// The years that are taken for an epoch.
inline constexpr int kEarliestEpoch = 1900;
inline constexpr int kLatestEpoch = 2200;
bool isEpoch(double year);
/// A decimal year; nothing for any other text.
std::optional<double> epochFromText(std::string_view text);

/// How many decimals tell a tenth of a nanodegree, or a micrometre, in each axis: ten in degrees, six in metres.
std::vector<int> decimalsFor(const std::vector<Embedded::AxisUnit>& axes);

/// The point's coordinates with so many decimals, and after three of them its epoch as it was given; JSON numbers, too.
std::vector<std::string> numbersOf(const Embedded::CoordinatePoint& point, const std::vector<int>& decimals);

} // namespace Orvelcs
