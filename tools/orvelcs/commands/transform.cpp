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

    ExitStatus run(const InputStream& input)
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
    const InputStream input = openInput(options.input);
    const std::unique_ptr<OutputFile> file = makeOutputFile(options);
    TransformRun run(options, std::move(task), file.get(), output);
    try {
        const ExitStatus status = run.run(input);
        run.finish();
        return status;
    } catch (...) { // the JSON document is completed in any case
        run.finish();
        throw;
    }
}

constexpr const char* kDetails =
    "\nA point is a line of x y, x y z or x y z epoch in the order of the system's own axes. A third\n"
    "number is always a height, and a fourth is always the epoch, a decimal year. Output line n is\n"
    "input line n: empty lines and lines that begin with # are printed as they are. If a point cannot\n"
    "be transformed, * is printed for it, and the exit status is 1; standard error has the numbers of\n"
    "the first 20 such lines with the reasons, and a count. If no transformation is configured, PROJ\n"
    "chooses one for each point.\n"
    "\n"
    "In a geographic system 52d30'15.5\"N, 52°30'15.5\", 52:30:15.5 and N52.5 are angles, too. N, S, E\n"
    "and W must belong to the axis, and exclude a sign. The output is decimal.\n"
    "\n"
    "--lonlat reads and prints longitude before latitude in geographic systems and easting before\n"
    "northing in projected ones, whatever the order of the system's axes; PROJ knows this order for\n"
    "displays. Units, signs, heights and geocentric coordinates stay as they are.\n"
    "\n"
    "--columns and --delimiter read tables: results take the places of the coordinates, all else is\n"
    "carried through as it is, and * stands in each coordinate of a point that failed. COLUMNS are\n"
    "X,Y or X,Y,Z or X,Y,Z,EPOCH (X,Y,,EPOCH without heights), numbers from 1 or names in the header.\n"
    "The header is the first line that is neither empty nor a comment, if a column is named or with\n"
    "--header. With a delimiter columns may be in quotes, and lines may end within them (RFC 4180);\n"
    "without one, blanks and tabs separate columns. Without --columns every column is a coordinate.\n"
    "A line may have 1048576 bytes. Every output line has an end; tables keep \\r\\n and a byte-order mark.\n"
    "\n"
    "With --operations the two columns follow tabs, or the delimiter. With --json and -o the lines go\n"
    "into OUT, and standard output has the JSON without points.";

void addTableOptions(CLI::App& app, TransformOptions& options)
{
    addArgument(app, "--columns COLUMNS", options.columns, "the columns of the coordinates, such as 3,2 or lat,lon,h");
    addArgument(app, "--delimiter C", options.delimiter, "the character between columns: , or ; or tab, for example");
    app.add_flag("--header", options.hasHeader, "the first line names the columns and is printed as it is");
}

std::vector<Command> declareTransform(CLI::App& program)
{
    auto options = std::make_shared<TransformOptions>();
    CLI::App* app = addCommand(program, {"transform",
                                         "Transform points from one system to another",
                                         {"transform [OPTIONS] SRC DST [FILE]"},
                                         std::string(kSystemHelp) + kDetails});
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
