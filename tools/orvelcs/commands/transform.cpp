// transform: points from standard input, from one system to another.
#include <memory>
#include <optional>
#include <vector>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/line_reader.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/system_pair.h"
#include "orvelcs/output/point_printer.h"
#include "orvelcs/output/point_text.h"
#include "orvelcs/output/transform_summary.h"

namespace Orvelcs {
namespace {

struct TransformOptions {
    std::string source;
    std::string target;
    std::string drawing;
    CLI::Option* drawingOption = nullptr;
    std::string epoch;
    CLI::Option* epochOption = nullptr;
    bool withOperations = false;
};

/// How the points are transformed.
struct PointTask {
    std::unique_ptr<Embedded::CoordinateTransformer> transformer;
    bool isConfigured = false;
    std::optional<double> epoch;      // of points without one of their own
    bool lookForMissingGrids = false; // which is slow
};

Embedded::Expected<Embedded::CoordinatePoint> parseLine(const LineReader& reader)
{
    if (reader.isTooLong())
        return Embedded::failure(0, fmt::format("longer than {} bytes", LineReader::kLongestLineInBytes));
    Embedded::Expected<Embedded::CoordinatePoint> point = parsePoint(reader.line());
    if (!point)
        return point;
    if (point->epoch && !isEpoch(*point->epoch))
        return Embedded::failure(0, fmt::format("expected a year from {} to {} in the fourth column, found {}",
                                                kEarliestEpoch, kLatestEpoch, *point->epoch));
    return point;
}

/// Transforms the points of lines in blocks, and prints a result for each line in their order.
class PointLines {
public:
    PointLines(PointTask& task, PointPrinter& printer, TransformSummary& summary, Output& output)
        : task_(task), printer_(printer), summary_(summary), output_(output)
    {
    }

    void add(const LineReader& reader)
    {
        constexpr std::size_t kMostPoints = 128; // more take as long for each
        const auto point = parseLine(reader);
        if (!point) {
            finishBlock();
            return report(reader.number(), {}, {Embedded::failure(point.error())});
        }
        lines_.push_back({reader.number(), point->epoch});
        points_.push_back(*point);
        if (!point->epoch)
            points_.back().epoch = task_.epoch;
        if (points_.size() == kMostPoints)
            finishBlock();
    }

    /// Transforms and prints the points that were added.
    void finishBlock()
    {
        std::vector<Embedded::TransformedPoint> results = task_.transformer->transformAll(points_);
        for (std::size_t index = 0; index < results.size(); ++index) {
            if (results[index].point)
                results[index].point->epoch = lines_[index].epoch;
            report(lines_[index].number, points_[index], results[index]);
        }
        lines_.clear();
        points_.clear();
    }

    /// Reports how many points failed.
    ExitStatus finish()
    {
        if (failures_ == 0)
            return ExitStatus::done;
        output_.error("standard input", fmt::format("{} of {} points could not be transformed", failures_, count_));
        return ExitStatus::failed;
    }

private:
    struct Line {
        std::size_t number;
        std::optional<double> epoch; // of its own
    };

    void report(std::size_t number, const Embedded::CoordinatePoint& given, const Embedded::TransformedPoint& result)
    {
        const auto& [point, operation] = result;
        ++count_;
        summary_.count(result, given.epoch.has_value());
        printer_.print(result);
        if (!point && ++failures_ == 1)
            output_.error(fmt::format("line {}", number), point.error().message);
        if (point && task_.lookForMissingGrids)
            lookForMissingGrids(given, operation);
    }

    /// Throws Failure where the catalog cannot be asked.
    void lookForMissingGrids(const Embedded::CoordinatePoint& given, std::size_t operation)
    {
        if (const auto found = task_.transformer->findMissingGrids(given, operation); !found)
            throw operationFailure(found.error(), ExitStatus::failed);
    }

    PointTask& task_;
    PointPrinter& printer_;
    TransformSummary& summary_;
    Output& output_;
    std::vector<Line> lines_;
    std::vector<Embedded::CoordinatePoint> points_; // of the lines
    std::size_t count_ = 0;
    std::size_t failures_ = 0;
};

/// Prints the results of all lines that are there before it waits for others, so that both ends of a pipe can work at
/// the same time.
ExitStatus transformLines(PointLines lines, Output& output)
{
    LineReader reader(readAvailable);
    while (output.flush() && reader.readBlock()) {
        while (reader.nextLine()) {
            if (!isBlankOrComment(reader.line()))
                lines.add(reader);
        }
        lines.finishBlock();
    }
    return lines.finish();
}

std::optional<double> epochOption(const TransformOptions& options)
{
    if (options.epochOption->count() == 0)
        return std::nullopt;
    const std::optional<double> epoch = parseEpoch(options.epoch);
    if (!epoch)
        throw wrongUsage("--epoch", fmt::format("expected a decimal year from {} to {}, found {}", kEarliestEpoch,
                                                kLatestEpoch, options.epoch));
    return epoch;
}

PointTask makeTask(const TransformOptions& options, const Output& output)
{
    if (namesStandardInput(options.source) || namesStandardInput(options.target))
        throw wrongUsage("@-", "standard input holds the points");
    const std::optional<double> epoch = epochOption(options);
    const auto drawing = options.drawingOption->count() > 0 ? std::optional(options.drawing) : std::nullopt;
    if (drawing == kStandardStream)
        throw wrongUsage("--drawing", "standard input holds the points");
    const SystemPair pair = readPair(options.source, options.target, output, ExitStatus::failed);
    const auto configured = configuredBetween(pair, drawing, output);
    auto transformer = transformerBetween(pair, configured);
    if (!transformer)
        throw operationFailure(transformer.error(), ExitStatus::failed);
    return {*std::move(transformer), configured.has_value(), epoch, output.json() || !output.isQuiet()};
}

ExitStatus runTransform(const TransformOptions& options, Output& output)
{
    PointTask task = withFailureDocument(nullptr, output, [&] { return makeTask(options, output); });
    TransformSummary summary(options.source + " to " + options.target, task.isConfigured, *task.transformer);
    summary.noteBefore(output);
    PointPrinter printer(*task.transformer, options.withOperations,
                         {{"source", options.source}, {"target", options.target}, {"configured", task.isConfigured}},
                         output);
    const auto finish = [&] {
        printer.finish(summary.asJson());
        summary.noteAfter(output);
    };
    try {
        const ExitStatus status = transformLines(PointLines(task, printer, summary, output), output);
        finish();
        return status;
    } catch (...) { // the JSON document is completed in any case
        finish();
        throw;
    }
}

std::vector<Command> declareTransform(CLI::App& program)
{
    auto options = std::make_shared<TransformOptions>();
    CLI::App* app = addCommand(
        program,
        {"transform",
         "Transform points from one system to another",
         {"transform [OPTIONS] SRC DST < POINTS"},
         std::string(kSystemHelp) +
             "\nA point is a line of x y, x y z or x y z epoch in the order of the system's own axes. A third\n"
             "number is always a height, and a fourth is always the epoch, a decimal year. Empty lines and\n"
             "lines that begin with # are skipped. If a point cannot be transformed, its output line is *\n"
             "and the exit status is 1. If no transformation is configured, PROJ chooses one for each point."});
    addArgument(*app, "SRC", options->source, "the points' SYSTEM")->required();
    addArgument(*app, "DST", options->target, "the SYSTEM to transform to")->required();
    options->drawingOption = addArgument(*app, "--drawing FILE", options->drawing,
                                         "the drawing whose configuration is used before the user's");
    options->epochOption =
        addArgument(*app, "--epoch YEAR", options->epoch, "the epoch of points without a fourth number");
    app->add_flag("--operations", options->withOperations,
                  "print the code and the name of the operation after each point, separated by tabs");
    return {{app, [options](Output& output) { return runTransform(*options, output); }}};
}

const CommandRegistration kTransformCommand({HelpGroup::transformations, 3}, declareTransform);

} // namespace

} // namespace Orvelcs
