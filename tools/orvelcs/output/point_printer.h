// Prints transformed points one by one: a line each, or one JSON object in pieces.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/cli/output.h"
#include "orvelcs/cli/output_file.h"
#include "orvelcs/output/point_columns.h"

namespace Orvelcs {

/// A line of the input, or several that quotes keep together.
struct PointLine {
    std::size_t number = 0;         // of the first one, from 1
    std::string_view text;          // without its end
    bool hasCarriageReturn = false; // at its end
    std::optional<double> epoch{};  // of its own
    CoordinatePlaces places{};      // where the input has columns
};

struct PointLayout {
    bool withOperations = false;
    bool isLongitudeFirst = false;
    bool hasColumns = false; // so that a result takes the place of its point in the line
    Delimiter delimiter{};   // of the columns
};

class PointPrinter {
public:
    /// Prints lines into `file` where there is one. Otherwise, where JSON is wanted, it begins the object with the
    /// members of `head`. The transformer must outlive the printer.
    PointPrinter(const Embedded::CoordinateTransformer& transformer, const PointLayout& layout, Json head,
                 Output& output, OutputFile* file);

    /// `result` is of the transformer.
    void print(const PointLine& line, const Embedded::TransformedPoint& result);
    /// Prints what stands for so many lines that cannot be read.
    void printUnreadable(std::size_t lines);

    /// Prints what is no point as it is. JSON has no place for it.
    void printOther(const PointLine& line);
    void printHeader(const PointLine& line);
    void printByteOrderMark();

    /// Ends the JSON object with the members of `tail`. With a file, prints an object without points.
    void finish(const Json& tail);

private:
    bool printsJson() const { return output_.json() && file_ == nullptr; }
    void write(std::string_view text);
    void appendLine(const PointLine& line, const Embedded::TransformedPoint& result);
    void appendInPlaces(const PointLine& line, const Embedded::TransformedPoint& result);
    void appendCoordinate(std::size_t axis, const PointLine& line, const Embedded::TransformedPoint& result);
    void appendOperation(const Embedded::TransformedPoint& result);
    void appendElement(const Embedded::TransformedPoint& result);
    void appendArray(const Embedded::TransformedPoint& result);
    const std::string& operationText(std::size_t operation);
    std::string operationColumns(const std::string& code, const std::string& name) const;

    const Embedded::CoordinateTransformer& transformer_;
    PointLayout layout_;
    std::vector<int> decimals_;
    Json head_;
    Output& output_;
    OutputFile* file_;
    bool isFirst_ = true;
    std::string text_;                        // of one line; kept for its memory
    std::vector<std::string> operationTexts_; // of the transformer's operations; they are the same for all points
};

/// The operation as an element of a JSON document.
Json operationAsJson(const Embedded::UsedOperation& operation);

} // namespace Orvelcs
