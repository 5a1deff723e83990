// Prints transformed points one by one: a line each, or one JSON object in pieces.
#pragma once

#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

class PointPrinter {
public:
    /// Begins the JSON object with the members of `head`.
    PointPrinter(const std::vector<Embedded::AxisUnit>& axes, bool withOperations, const Json& head, Output& output);

    /// Both are null for a point that cannot be transformed.
    void print(const Embedded::CoordinatePoint* point, const Embedded::UsedOperation* used);

    /// Ends the JSON object with the members of `tail`.
    void finish(const Json& tail);

private:
    void appendLine(const Embedded::CoordinatePoint* point, const Embedded::UsedOperation* used);
    void appendElement(const Embedded::CoordinatePoint* point, const Embedded::UsedOperation* used);
    void appendArray(const Embedded::CoordinatePoint* point);

    std::vector<int> decimals_;
    bool withOperations_;
    Output& output_;
    bool isFirst_ = true;
    std::string text_; // of one point; kept for its memory
};

/// The operation as an element of a JSON document.
Json operationAsJson(const Embedded::UsedOperation& operation);

} // namespace Orvelcs
