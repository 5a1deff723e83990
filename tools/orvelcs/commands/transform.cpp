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

const std::string kTransformDetails =
    std::string(kSystemHelp) +
    "\n\nEach line of standard input is a point, x y, x y z or x y z epoch, in the order and the units of the system's "
    "own "
    "axes, as numbers with a decimal point whatever the locale. A third number is always a height, and a fourth always "
    "the "
    "epoch at which the coordinates hold, a decimal year from 1900 to 2200. For each point a line in the axes and "
    "units of "
    "the other system is printed at once: with ten decimals for degrees, six for metres, and in other units as many as "
    "give "
    "the same accuracy. If the input has an epoch, the output line repeats it at the end.\n\n"
    "If a line is not a point or its point cannot be transformed, its output line is *, or null in JSON. A message "
    "names "
    "the first such line by its number, another one at the end counts them all, and the exit status is 1. Empty lines "
    "and "
    "lines that begin with # are skipped. A line has at most 4,096 bytes.\n\n"
    "A configured transformation is used in the direction that fits, and no other is used instead. It is refused if it "
    "does "
    "not connect the two systems, would have to be reversed and is not reversible, needs a grid that is not installed, "
    "or "
    "has a method that PROJ does not implement. From the given systems to its own systems only projection, axes, units "
    "and "
    "the prime meridian change.\n\n"
    "Without a configuration PROJ chooses an operation for each point, including its height, as its program cs2cs "
    "does. If "
    "the two systems have one operation, a note names it and its accuracy before the first point is printed. If they "
    "have "
    "several, a note after the last point names all that were chosen, with their numbers of points. An operation whose "
    "grids are not installed is never chosen. If a point lies in the area of such an operation that is more accurate, "
    "a "
    "note names its grids and the command that puts each where PROJ looks for it. After five such notes only the "
    "number of "
    "the other grids is printed; --json names them all. If no operation covers a point, PROJ treats the two datums as "
    "equal "
    "if it has such a ballpark operation between the two systems. Otherwise it uses an operation outside its area, "
    "where "
    "the accuracy does not hold. A ballpark operation is reported even with --quiet and even for a single point.\n\n"
    "Some operations depend on time, such as those between a system that moves with its plate and one that does not. "
    "For a "
    "point without an epoch they use their own reference epoch, and a note says so. Grids are read over the network "
    "only if "
    "the environment variable PROJ_NETWORK is ON, regardless of PROJ's own settings file, and a note says so.\n\n"
    "The transformed point has a height if the given point has one, and always in a geocentric system. Without a "
    "configured "
    "operation it is the height that PROJ computes. With one, a height is kept if the systems have the same heights or "
    "one "
    "has none. It is transformed if both have ellipsoidal heights or if the operation transforms heights. A point with "
    "a "
    "height fails if the heights of the systems differ and the operation does not transform them.\n\n"
    "In JSON the output is one object, which is written while points are read and is complete even if the points "
    "cannot be "
    "read to their end:\n"
    "  source, target, configured  The systems, and whether a transformation is configured.\n"
    "  points  An array with [x, y], [x, y, z] or [x, y, z, epoch] for each point. With --operations each element is "
    "an "
    "object with point and operation.\n"
    "  operations  Those that were used, each with code (null for one that PROJ composed of several), name, accuracy "
    "in "
    "metres, ballpark, timeDependent and the number of its points.\n"
    "  missingGrids  Each with its name, the operation that lacks it with code and accuracy, the command (null if PROJ "
    "offers no download) and the folder where it belongs.\n"
    "  network  Whether grids may be read over the network.\n"
    "  epochMissing  Whether a point needed an epoch and had none.";

std::vector<Command> declareTransform(CLI::App& program)
{
    auto options = std::make_shared<TransformOptions>();
    CLI::App* app = addCommand(
        program,
        {"transform",
         "Transform points from one system to another",
         {"transform [OPTIONS] SRC DST < POINTS"},
         kTransformDetails,
         {{"Transform a point", "echo 48.85 2.35 | orvelcs transform EPSG:4326 EPSG:27572"},
          {"Transform the points of a file, and print the operation of each",
           "orvelcs transform --operations EPSG:4326 EPSG:25832 < points.txt"},
          {"Transform from the system of a drawing", "echo 500000 5500000 | orvelcs transform @site.qedb EPSG:4326"}}});
    addArgument(*app, "SRC", options->source, "the points' SYSTEM")->required();
    addArgument(*app, "DST", options->target, "the SYSTEM to transform to")->required();
    options->drawingOption = addArgument(*app, "--drawing FILE", options->drawing,
                                         "the drawing whose configuration is used before the user's");
    options->epochOption =
        addArgument(*app, "--epoch YEAR", options->epoch, "the epoch of points without a fourth number");
    app->add_flag(
        "--operations", options->withOperations,
        "print the code and the name of the operation after each point, separated by tabs; the code is empty for "
        "one that PROJ composed of several");
    return {{app, [options](Output& output) { return runTransform(*options, output); }}};
}

const CommandRegistration kTransformCommand({HelpGroup::transformations, 3}, declareTransform);

} // namespace

} // namespace Orvelcs
