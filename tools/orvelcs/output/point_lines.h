// Transforms the points of lines.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/cli/line_reader.h"
#include "orvelcs/output/point_columns.h"
#include "orvelcs/output/point_failures.h"
#include "orvelcs/output/point_printer.h"
#include "orvelcs/output/transform_summary.h"

namespace Orvelcs {

/// How the points are read and transformed.
struct PointTask {
    std::unique_ptr<Embedded::CoordinateTransformer> transformer;
    bool isConfigured = false;
    std::optional<double> epoch{};         // of points without one of their own
    bool lookForMissingGrids = false;      // which is slow
    bool isLongitudeFirst = false;         // in and out
    std::optional<PointColumns> columns{}; // nothing where a line is a point and nothing else
    bool hasHeader = false;
};

/// Transforms the points of lines in blocks, and prints a result for each line in their order.
class PointLines {
public:
    PointLines(PointTask& task, PointPrinter& printer, TransformSummary& summary, PointFailures& failures);

    void add(const LineReader& reader);
    /// Transforms and prints the points that were added. Their lines may then change.
    void finishBlock();
    /// Does so at the end of the input.
    void finish();

    /// How many points there were, those that failed included.
    std::size_t count() const { return count_; }

private:
    /// Lines that open quotes keep together.
    struct Record {
        std::string text;
        std::size_t firstLine = 0;
        std::size_t lines = 0; // 0 while no quotes are open
    };

    PointLine lineOf(const LineReader& reader) const;
    void addLine(PointLine line);
    void addPoint(PointLine line);
    void openRecord(const LineReader& reader);
    void continueRecord(const LineReader& reader);
    void refuseRecord(const std::string& reason);
    void fail(const PointLine& line, const Embedded::Error& error);
    void report(const PointLine& line, const Embedded::CoordinatePoint& given, Embedded::TransformedPoint& result);
    void lookForMissingGrids(const Embedded::CoordinatePoint& given, std::size_t operation);

    PointTask& task_;
    PointPrinter& printer_;
    TransformSummary& summary_;
    PointFailures& failures_;
    LineAxes axes_;
    bool expectsHeader_;
    bool isFirstPoint_ = true;
    std::vector<PointLine> lines_;
    std::vector<Embedded::CoordinatePoint> points_; // of the lines
    Record record_;
    std::size_t count_ = 0;
};

} // namespace Orvelcs
