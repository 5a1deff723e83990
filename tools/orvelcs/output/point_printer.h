// Prints transformed points one by one: a line each, or one JSON object in pieces.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

class PointPrinter {
public:
    /// Begins the JSON object with the members of `head`.
    PointPrinter(const std::vector<Embedded::AxisUnit>& axes, bool withOperations, const Json& head, Output& output);

    /// `used` is null for a point that cannot be transformed.
    void print(const std::optional<Embedded::CoordinatePoint>& point, const Embedded::UsedOperation* used);

    /// Ends the JSON object with the members of `tail`.
    void finish(const Json& tail);

private:
    std::string element(const std::optional<Embedded::CoordinatePoint>& point) const;

    std::vector<int> decimals_;
    bool withOperations_;
    Output& output_;
    bool isFirst_ = true;
};

/// The operation as an element of a JSON document.
Json operationAsJson(const Embedded::UsedOperation& operation);

} // namespace Orvelcs
