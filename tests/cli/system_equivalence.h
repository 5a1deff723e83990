// PROJ's opinion whether two texts are the same coordinate system.
#pragma once

#include <string>

namespace Tests {

enum class AxisOrder {
    counts,
    ignored // the longitude or the easting comes first in both
};

/// Returns whether PROJ reads both, as a code or a definition, and takes them for the same system, names aside.
bool isSameSystem(const std::string& left, const std::string& right, AxisOrder order = AxisOrder::counts);

} // namespace Tests
