// Prints transformed points one by one: a line each, or one JSON object in pieces.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

class PointPrinter {
public:
    /// Begins the JSON object with the members of `head`. The transformer must outlive the printer.
    PointPrinter(const Embedded::CoordinateTransformer& transformer, bool withOperations, const Json& head,
                 Output& output);

    /// `result` is of the transformer.
    void print(const Embedded::TransformedPoint& result);

    /// Ends the JSON object with the members of `tail`.
    void finish(const Json& tail);

private:
    void appendLine(const Embedded::TransformedPoint& result);
    void appendElement(const Embedded::TransformedPoint& result);
    void appendArray(const Embedded::TransformedPoint& result);
    const std::string& operationText(std::size_t operation);

    const Embedded::CoordinateTransformer& transformer_;
    std::vector<int> decimals_;
    bool withOperations_;
    Output& output_;
    bool isFirst_ = true;
    std::string text_;                        // of one point; kept for its memory
    std::vector<std::string> operationTexts_; // of the transformer's operations; they are the same for all points
};

/// The operation as an element of a JSON document.
Json operationAsJson(const Embedded::UsedOperation& operation);

} // namespace Orvelcs
