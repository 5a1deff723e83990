// transform: points from one system to another, from a file or standard input.
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/interruption.h"
#include "orvelcs/cli/line_reader.h"
#include "orvelcs/cli/output_file.h"
#include "orvelcs/cli/process.h"
#include "orvelcs/cli/progress_text.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/system_pair.h"
#include "orvelcs/output/point_lines.h"

namespace Orvelcs {
namespace {

struct TransformOptions {
    std::string source;
    std::string target;
    std::string input = kStandardStream;
    std::string output = kStandardStream;
    bool force = false;
    bool isInverse = false;
    bool isLongitudeFirst = false;
    std::string columns;
    std::string delimiter;
    bool hasHeader = false;
    std::string drawing;
    CLI::Option* drawingOption = nullptr;
    std::string epoch;
    CLI::Option* epochOption = nullptr;
    bool withOperations = false;
    bool printsAllReasons = false;

    bool readsStandardInput() const { return input == kStandardStream; }
    const std::string& from() const { return isInverse ? target : source; }
    const std::string& to() const { return isInverse ? source : target; }
};

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

std::optional<PointColumns> columnsOption(const TransformOptions& options)
{
    if (options.columns.empty() && options.delimiter.empty())
        return std::nullopt;
    const Delimiter delimiter =
        options.delimiter.empty() ? std::nullopt : Delimiter(delimiterArgument("--delimiter", options.delimiter));
    return PointColumns(delimiter, options.columns);
}

void checkStandardInput(const TransformOptions& options)
{
    if (!options.readsStandardInput())
        return;
    if (namesStandardInput(options.source) || namesStandardInput(options.target))
        throw wrongUsage("@-", "standard input holds the points");
    if (options.drawingOption->count() > 0 && options.drawing == kStandardStream)
        throw wrongUsage("--drawing", "standard input holds the points");
}

/// A height that a point gets, or has to have, needs a column.
void checkHeightColumn(const PointTask& task)
{
    const bool isGeocentric = task.transformer->needsHeight() || task.transformer->addsHeight();
    if (isGeocentric && task.columns && task.columns->lackHeights())
        throw wrongUsage("--columns", "expected X,Y,Z, since one of the systems is geocentric");
}

PointTask makeTask(const TransformOptions& options, const Output& output)
{
    checkStandardInput(options);
    const std::optional<double> epoch = epochOption(options);
    std::optional<PointColumns> columns = columnsOption(options);
    const bool hasHeader = options.hasHeader || (columns && columns->areNamed());
    const auto drawing = options.drawingOption->count() > 0 ? std::optional(options.drawing) : std::nullopt;
    const SystemPair pair = readPair(options.from(), options.to(), output, ExitStatus::failed);
    const auto configured = configuredBetween(pair, drawing, output);
    auto transformer = transformerBetween(pair, configured);
    if (!transformer)
        throw operationFailure(transformer.error(), ExitStatus::failed);
    PointTask task{.transformer = *std::move(transformer),
                   .isConfigured = configured.has_value(),
                   .epoch = epoch,
                   .lookForMissingGrids = output.json() || !output.isQuiet(),
                   .isLongitudeFirst = options.isLongitudeFirst,
                   .columns = std::move(columns),
                   .hasHeader = hasHeader};
    checkHeightColumn(task);
    return task;
}

/// Shows how far the input is read, unless it or its results are on the terminal themselves.
class PointProgress {
public:
    PointProgress(const TransformOptions& options, const InputStream& input, const Output& output)
        : options_(options),
          input_(input),
          output_(output),
          isShown_(!(options.readsStandardInput() && isTerminal(stdin)) &&
                   !(options.output == kStandardStream && isTerminal(stdout)))
    {
    }

    void show(std::size_t points, std::uintmax_t bytes)
    {
        using std::chrono::milliseconds;
        constexpr milliseconds kInterval{500};
        const auto elapsed = std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start_);
        if (!isShown_ || elapsed < next_)
            return;
        next_ = elapsed + kInterval;
        output_.progress(progressText(points, {bytes, input_.sizeInBytes.value_or(0)}, elapsed),
                         inputName(options_.input));
    }

private:
    const TransformOptions& options_;
    const InputStream& input_;
    const Output& output_;
    bool isShown_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::chrono::milliseconds next_{500};
};

/// Prints the results of all lines that are there before it waits for others, so that both ends of a pipe can work at
/// the same time.
void transformLines(PointLines& lines, const InputStream& input, PointProgress progress, Output& output)
{
    std::uintmax_t bytesRead = 0;
    LineReader reader([&](char* bytes, std::size_t length) {
        const std::size_t count = input.read(bytes, length);
        bytesRead += count;
        return count;
    });
    while (!isInterrupted() && output.flush() && reader.readBlock()) {
        while (reader.nextLine())
            lines.add(reader);
        lines.finishBlock();
        progress.show(lines.count(), bytesRead);
    }
    lines.finish();
}

std::unique_ptr<OutputFile> makeOutputFile(const TransformOptions& options)
{
    if (options.output == kStandardStream)
        return nullptr;
    return std::make_unique<OutputFile>(options.output,
                                        options.force ? OverwritingFiles::allowed : OverwritingFiles::refused);
}

/// Transforms the points, and says what happened in any case.
class TransformRun {
public:
    TransformRun(const TransformOptions& options, PointTask task, OutputFile* file, Output& output)
        : options_(options),
          task_(std::move(task)),
          file_(file),
          output_(output),
          summary_(options.from() + " to " + options.to(), task_.isConfigured, *task_.transformer),
          printer_(*task_.transformer, layout(), head(), output, file),
          failures_(output, options.printsAllReasons)
    {
        summary_.noteBefore(output);
    }

    ExitStatus run(InputStream input)
    {
        std::optional<DeferredInterruption> interruption; // so that nothing is left beside the file
        if (file_ != nullptr && !options_.readsStandardInput())
            interruption.emplace();
        PointLines lines(task_, printer_, summary_, failures_);
        transformLines(lines, input, PointProgress(options_, input, output_), output_);
        if (interruption && isInterrupted()) {
            output_.error("interrupted",
                          fmt::format("after {} points; {} is not written", lines.count(), file_->name()));
            return ExitStatus::interrupted;
        }
        input.read = nullptr; // closes it: Windows does not replace a file that is open
        if (file_ != nullptr)
            file_->complete();
        failures_.finish(inputName(options_.input), lines.count());
        if (file_ != nullptr)
            output_.confirm(file_->name(), fmt::format("{} of {} points transformed", lines.count() - failures_.count(),
                                                       lines.count()));
        return failures_.count() == 0 ? ExitStatus::done : ExitStatus::failed;
    }

    void finish()
    {
        Json tail = summary_.asJson();
        tail.update(failures_.asJson());
        printer_.finish(tail);
        summary_.noteAfter(output_);
    }

private:
    PointLayout layout() const
    {
        return {.withOperations = options_.withOperations,
                .isLongitudeFirst = options_.isLongitudeFirst,
                .hasColumns = task_.columns.has_value(),
                .delimiter = task_.columns ? task_.columns->delimiter() : std::nullopt};
    }

    Json head() const
    {
        return {{"source", options_.from()},
                {"target", options_.to()},
                {"configured", task_.isConfigured},
                {"output", file_ != nullptr ? Json(file_->name()) : Json(nullptr)}};
    }

    const TransformOptions& options_;
    PointTask task_;
    OutputFile* file_;
    Output& output_;
    TransformSummary summary_;
    PointPrinter printer_;
    PointFailures failures_;
};

ExitStatus runTransform(const TransformOptions& options, Output& output)
{
    PointTask task = withFailureDocument(nullptr, output, [&] { return makeTask(options, output); });
    InputStream input = openInput(options.input);
    const std::unique_ptr<OutputFile> file = makeOutputFile(options);
    TransformRun run(options, std::move(task), file.get(), output);
    try {
        const ExitStatus status = run.run(std::move(input));
        run.finish();
        return status;
    } catch (...) { // the JSON document is completed in any case
        run.finish();
        throw;
    }
}

const std::string kTransformDetails =
    std::string(kSystemHelp) +
    "\n\n"
    "A point is a line of x y, x y z or x y z epoch in the order and the units of the system's own axes, with a "
    "decimal point whatever the locale. A third number is always a height, and a fourth always the epoch at which the "
    "coordinates hold, a decimal year from 1900 to 2200. Results have ten decimals for degrees, six for metres, and "
    "in other units as many as give the same accuracy. If the input has an epoch, the output repeats it at the end. "
    "All lines that are there are answered before the next is waited for.\n\n"
    "Output line n is input line n: empty lines and lines that begin with # are printed as they are. If a point "
    "cannot be transformed, * is printed for it, null in JSON, and the exit status is 1; standard error has the "
    "numbers of the first 20 such lines with the reasons, and a count. A line may have 1048576 bytes.\n\n"
    "In a geographic system 52d30'15.5\"N, 52°30'15.5\", 52:30:15.5 and N52.5 are angles, too. N, S, E and W must "
    "belong to the axis, and exclude a sign. The output is decimal.\n\n"
    "--lonlat reads and prints longitude before latitude in geographic systems and easting before northing in "
    "projected ones, whatever the order of the system's axes; PROJ knows this order for displays. Units, signs, "
    "heights and geocentric coordinates stay as they are.\n\n"
    "--columns and --delimiter read tables: results take the places of the coordinates, all else is carried through "
    "as it is, and * stands in each coordinate of a point that failed. COLUMNS are X,Y or X,Y,Z or X,Y,Z,EPOCH "
    "(X,Y,,EPOCH without heights), numbers from 1 or names in the header. The header is the first line that is "
    "neither empty nor a comment, if a column is named or with --header. With a delimiter columns may be in quotes, "
    "and lines may end within them (RFC 4180); without one, blanks and tabs separate columns. Without --columns every "
    "column is a coordinate. Tables keep \\r\\n"
    " and a byte-order mark.\n\n"
    "With --operations the two columns follow tabs, or the delimiter; the code is empty for an operation that PROJ "
    "composed of several. With --json and -o the lines go into OUT, and standard output has the JSON without "
    "points.\n\n"
    "A configured transformation is used in the direction that fits, and no other is used instead. It is refused if "
    "it does not connect the two systems, would have to be reversed and is not reversible, needs a grid that is not "
    "installed, or has a method that PROJ does not implement. From the given systems to its own systems only "
    "projection, axes, units and the prime meridian change.\n\n"
    "Without a configuration PROJ chooses an operation for each point, including its height, as its program cs2cs "
    "does. If the two systems have one operation, a note names it and its accuracy before the first point is printed. "
    "If they have several, a note after the last point names all that were chosen, with their numbers of points. An "
    "operation whose grids are not installed is never chosen. If a point lies in the area of such an operation that "
    "is more accurate, a note names its grids and the command that puts each where PROJ looks for it. After five such "
    "notes only the number of the other grids is printed; --json names them all. If no operation covers a point, PROJ "
    "treats the two datums as equal if it has such a ballpark operation between the two systems. Otherwise it uses an "
    "operation outside its area, where the accuracy does not hold. A ballpark operation is reported even with --quiet "
    "and even for a single point.\n\n"
    "Some operations depend on time, such as those between a system that moves with its plate and one that does not. "
    "For a point without an epoch they use their own reference epoch, and a note says so. Grids are read over the "
    "network only if the environment variable PROJ_NETWORK is ON, regardless of PROJ's own settings file, and a note "
    "says so.\n\n"
    "The transformed point has a height if the given point has one, and always in a geocentric system. Without a "
    "configured operation it is the height that PROJ computes. With one, a height is kept if the systems have the "
    "same heights or one has none. It is transformed if both have ellipsoidal heights or if the operation transforms "
    "heights. A point with a height fails if the heights of the systems differ and the operation does not transform "
    "them.\n\n"
    "In JSON the output is one object, which is written while points are read and is complete even if the points "
    "cannot be read to their end:\n"
    "  source, target, configured  The systems, and whether a transformation is configured.\n"
    "  points  An array with [x, y], [x, y, z] or [x, y, z, epoch] for each point. With --operations each element is "
    "an object with point and operation.\n"
    "  operations  Those that were used, each with code (null for one that PROJ composed of several), name, accuracy "
    "in metres, ballpark, timeDependent and the number of its points.\n"
    "  missingGrids  Each with its name, the operation that lacks it with code and accuracy, the command (null if "
    "PROJ offers no download) and the folder where it belongs.\n"
    "  network  Whether grids may be read over the network.\n"
    "  epochMissing  Whether a point needed an epoch and had none.";

void addTableOptions(CLI::App& app, TransformOptions& options)
{
    addArgument(app, "--columns COLUMNS", options.columns, "the columns of the coordinates, such as 3,2 or lat,lon,h");
    addArgument(app, "--delimiter C", options.delimiter, "the character between columns: , or ; or tab, for example");
    app.add_flag("--header", options.hasHeader, "the first line names the columns and is printed as it is");
}

std::vector<Command> declareTransform(CLI::App& program)
{
    auto options = std::make_shared<TransformOptions>();
    CLI::App* app = addCommand(
        program,
        {"transform",
         "Transform points from one system to another",
         {"transform [OPTIONS] SRC DST [FILE]"},
         kTransformDetails,
         {{"Transform a point", "echo 48.85 2.35 | orvelcs transform EPSG:4326 EPSG:27572"},
          {"Transform the points of a file, and print the operation of each",
           "orvelcs transform --operations EPSG:4326 EPSG:25832 points.txt"},
          {"Transform two columns of a table, and keep the others",
           "orvelcs transform EPSG:4326 EPSG:25832 points.csv -o metres.csv --delimiter , --columns lat,lon"},
          {"Transform from the system of a drawing", "echo 500000 5500000 | orvelcs transform @site.qedb EPSG:4326"}}});
    addArgument(*app, "SRC", options->source, "the points' SYSTEM")->required();
    addArgument(*app, "DST", options->target, "the SYSTEM to transform to")->required();
    addArgument(*app, "FILE", options->input, "the points; - is standard input, as without FILE");
    addArgument(*app, "-o,--output OUT", options->output,
                "write the results to OUT, which must not exist; - is standard output");
    app->add_flag("--force", options->force, "overwrite OUT, completely or not at all");
    app->add_flag("--inverse", options->isInverse, "transform from DST to SRC");
    app->add_flag("--lonlat", options->isLongitudeFirst, "longitudes and eastings come first, in and out");
    addTableOptions(*app, *options);
    options->epochOption =
        addArgument(*app, "--epoch YEAR", options->epoch, "the epoch of points without one of their own");
    app->add_flag("--operations", options->withOperations,
                  "print the code and the name of the operation after each point, as two columns");
    options->drawingOption = addArgument(*app, "--drawing FILE", options->drawing,
                                         "the drawing whose configuration is used before the user's");
    app->add_flag("--verbose", options->printsAllReasons, "print why each point failed, not only for the first 20");
    return {{app, [options](Output& output) { return runTransform(*options, output); }}};
}

const CommandRegistration kTransformCommand({HelpGroup::transformations, 3}, declareTransform);

} // namespace

} // namespace Orvelcs
