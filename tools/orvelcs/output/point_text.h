// Reads and prints points as lines of text, whatever the locale.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"

namespace Orvelcs {

/// Returns whether a line is empty or a comment after "#".
bool isBlankOrComment(std::string_view line);

/// The axes of x, y, z and the epoch as they stand in a line.
using LineAxes = std::array<Embedded::AxisUnit, 4>;
LineAxes lineAxes(const Embedded::SystemAxes& system, bool isLongitudeFirst);

/// Exchanges x and y where they stand in a line in another order than in the system.
inline void exchangeAxes(Embedded::CoordinatePoint& point, const Embedded::SystemAxes& system, bool isLongitudeFirst)
{
    if (isLongitudeFirst && system.isNorthingFirst)
        std::swap(point.x, point.y);
}

/// Reads "x y", "x y z" or "x y z epoch", separated by blanks and tabs. Angles may have minutes and seconds. The Error
/// says what else was found, such as a number that is not finite: "expected 2 to 4 numbers, found 5".
Embedded::Expected<Embedded::CoordinatePoint> parsePoint(std::string_view line, const LineAxes& axes);

/// Reads one coordinate. The Error says what was found instead of `expected`.
Embedded::Expected<double> parseCoordinate(std::string_view text, const Embedded::AxisUnit& axis,
                                           std::string_view expected);

/// The Error says that the point's epoch is none.
Embedded::Expected<void> checkEpoch(const Embedded::CoordinatePoint& point);

/// The years that can be an epoch.
inline constexpr int kEarliestEpoch = 1900;
inline constexpr int kLatestEpoch = 2200;
bool isEpoch(double year);
/// A decimal year; nothing for any other text.
std::optional<double> parseEpoch(std::string_view text);

/// The number of decimals for each axis that show a tenth of a nanodegree or a micrometre: ten in degrees, six in
/// metres.
std::vector<int> decimalsFor(const LineAxes& axes);

/// Appends a number with so many decimals, correctly rounded, and without the sign of a zero.
void appendNumber(double number, int decimals, std::string& text);

/// Appends the coordinates with these decimals and, behind three of them, the epoch as it was given. They are JSON
/// numbers too.
void appendNumbers(const Embedded::CoordinatePoint& point, const std::vector<int>& decimals, std::string_view separator,
                   std::string& text);

} // namespace Orvelcs
