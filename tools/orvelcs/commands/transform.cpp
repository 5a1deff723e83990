// transform: points from standard input, from one system to another.
#include <memory>
#include <optional>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/configured_transformation.h"
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

struct PointResult {
    Embedded::CoordinatePoint given;
    Embedded::TransformedPoint transformed;
};

PointResult failedPoint(const std::string& message)
{
    return {{}, {Embedded::failure(0, message)}};
}

PointResult transformLine(const LineReader& reader, PointTask& task)
{
    if (reader.isTooLong())
        return failedPoint(fmt::format("longer than {} bytes", LineReader::kLongestLineInBytes));
    Embedded::Expected<Embedded::CoordinatePoint> point = parsePoint(reader.line());
    if (!point)
        return failedPoint(point.error().message);
    if (point->epoch && !isEpoch(*point->epoch))
        return failedPoint(fmt::format("expected a year from {} to {} in the fourth column, found {}", kEarliestEpoch,
                                       kLatestEpoch, *point->epoch));
    const std::optional<double> ownEpoch = point->epoch;
    if (!ownEpoch)
        point->epoch = task.epoch;
    PointResult result{*point, task.transformer->transform(*point)};
    if (result.transformed.point)
        result.transformed.point->epoch = ownEpoch;
    return result;
}

/// Throws Failure where the catalog cannot be asked.
void lookForMissingGrids(PointTask& task, const PointResult& result)
{
    if (const auto found = task.transformer->findMissingGrids(result.given, result.transformed.operation); !found)
        throw operationFailure(found.error(), ExitStatus::failed);
}

/// Prints each line's result at once, so that both ends of a pipe can work at the same time.
ExitStatus transformLines(PointTask& task, PointPrinter& printer, TransformSummary& summary, Output& output)
{
    LineReader reader;
    std::size_t points = 0;
    std::size_t failures = 0;
    while (output.flush() && reader.next()) {
        if (isBlankOrComment(reader.line()))
            continue;
        ++points;
        const PointResult result = transformLine(reader, task);
        const auto& [point, operation] = result.transformed;
        summary.count(result.transformed, result.given.epoch.has_value());
        printer.print(point ? std::optional(*point) : std::nullopt,
                      point ? &task.transformer->operations()[operation] : nullptr);
        if (!point && ++failures == 1)
            output.error(fmt::format("line {}", reader.number()), point.error().message);
        if (point && task.lookForMissingGrids)
            lookForMissingGrids(task, result);
    }
    if (failures == 0)
        return ExitStatus::done;
    output.error("standard input", fmt::format("{} of {} points could not be transformed", failures, points));
    return ExitStatus::failed;
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
    const std::wstring source = wideArgument("SRC", options.source);
    const std::wstring target = wideArgument("DST", options.target);
    const std::optional<double> epoch = epochOption(options);
    const auto drawing = options.drawingOption->count() > 0 ? std::optional(options.drawing) : std::nullopt;
    if (drawing == kStandardStream)
        throw wrongUsage("--drawing", "standard input holds the points");
    const auto configured = configuredTransformation(source, target, drawing, output);
    auto transformer = Embedded::makeTransformer(source, target, configured);
    if (!transformer)
        throw operationFailure(transformer.error(), ExitStatus::failed);
    return {*std::move(transformer), configured.has_value(), epoch, output.json() || !output.isQuiet()};
}

ExitStatus runTransform(const TransformOptions& options, Output& output)
{
    PointTask task = withFailureDocument(nullptr, DocumentedFailures::allButWrongUsage, output,
                                         [&] { return makeTask(options, output); });
    TransformSummary summary(options.source + " to " + options.target, task.isConfigured, *task.transformer);
    summary.noteBefore(output);
    PointPrinter printer(task.transformer->targetUnits(), options.withOperations,
                         {{"source", options.source}, {"target", options.target}, {"configured", task.isConfigured}},
                         output);
    const auto finish = [&] {
        printer.finish(summary.asJson());
        summary.noteAfter(output);
    };
    try {
        const ExitStatus status = transformLines(task, printer, summary, output);
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
        program, {"transform",
                  "Transform points from one system to another",
                  {"transform [OPTIONS] SRC DST < POINTS"},
                  "A point is a line of x y, x y z or x y z epoch in the order of the system's own axes. A third\n"
                  "number is always a height, and a fourth is always the epoch, a decimal year. Empty lines and\n"
                  "lines that begin with # are skipped. If a point cannot be transformed, its output line is *\n"
                  "and the exit status is 1. If no transformation is configured, PROJ chooses one for each point."});
    addArgument(*app, "SRC", options->source, "the code of the points' system")->required();
    addArgument(*app, "DST", options->target, "the code of the system to transform to")->required();
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
