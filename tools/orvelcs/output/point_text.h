// Reads and prints points as lines of text, whatever the locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"

namespace Orvelcs {

/// Returns whether a line is empty or a comment after "#".
bool isBlankOrComment(std::string_view line);

/// Reads "x y", "x y z" or "x y z epoch", separated by blanks and tabs. The Error says what else was found, such as a
/// number that is not finite: "expected 2 to 4 numbers, found 5".
Embedded::Expected<Embedded::CoordinatePoint> parsePoint(std::string_view line);

/// The years that can be an epoch.
inline constexpr int kEarliestEpoch = 1900;
inline constexpr int kLatestEpoch = 2200;
bool isEpoch(double year);
/// A decimal year; nothing for any other text.
std::optional<double> parseEpoch(std::string_view text);

/// The number of decimals for each axis that show a tenth of a nanodegree or a micrometre: ten in degrees, six in
/// metres.
std::vector<int> decimalsFor(const std::vector<Embedded::AxisUnit>& axes);

/// Appends the coordinates with these decimals and, behind three of them, the epoch as it was given. They are JSON
/// numbers too.
void appendNumbers(const Embedded::CoordinatePoint& point, const std::vector<int>& decimals, std::string_view separator,
                   std::string& text);

} // namespace Orvelcs
