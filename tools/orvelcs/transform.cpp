// transform: points from standard input, from one system to another.
#include <memory>
#include <optional>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "embedded/foundation/text.h"
#include "embedded/spatial_reference/coordinate_operations.h"
#include "orvelcs/command.h"
#include "orvelcs/configured_transformation.h"
#include "orvelcs/failure_document.h"
#include "orvelcs/line_reader.h"
#include "orvelcs/operation_failure.h"
#include "orvelcs/point_text.h"
#include "orvelcs/standard_streams.h"

namespace Orvelcs {
namespace {

struct TransformOptions {
    std::string source;
    std::string target;
    std::string drawing;
    CLI::Option* drawingOption = nullptr;
};

/// The answers in the order of the points: a line each, or elements of one array.
class PointPrinter {
public:
    PointPrinter(const std::vector<Embedded::AxisUnit>& axes, Output& output)
        : decimals_(decimalsFor(axes)), output_(output)
    {
        if (output_.json())
            output_.write("[");
    }

    void print(const std::optional<Embedded::CoordinatePoint>& point)
    {
        if (output_.json())
            output_.write(fmt::format("{}\n  {}", isFirst_ ? "" : ",", element(point)));
        else
            output_.line(point ? fmt::format("{}", fmt::join(numbersOf(*point, decimals_), " ")) : "*");
        isFirst_ = false;
    }

    void finish()
    {
        if (output_.json())
            output_.write(isFirst_ ? "]\n" : "\n]\n");
    }

private:
    std::string element(const std::optional<Embedded::CoordinatePoint>& point) const
    {
        return point ? fmt::format("[{}]", fmt::join(numbersOf(*point, decimals_), ", ")) : "null";
    }

    std::vector<int> decimals_;
    Output& output_;
    bool isFirst_ = true;
};

Embedded::TransformedPoint answerTo(const LineReader& reader, const Embedded::CoordinateTransformer& transformer)
{
    if (reader.isTooLong())
        return {std::nullopt, L"longer than " + std::to_wstring(LineReader::kLongestLineInBytes) + L" bytes"};
    const std::optional<Embedded::CoordinatePoint> point = pointFromLine(reader.line());
    return point ? transformer.transform(*point)
                 : Embedded::TransformedPoint{std::nullopt,
                                              Embedded::wideFromUtf8(describeLineWithoutPoint(reader.line()))};
}

/// Answers each line as it comes, so that both ends of a pipe can work at the same time.
ExitStatus transformLines(const Embedded::CoordinateTransformer& transformer, PointPrinter& printer, Output& output)
{
    LineReader reader;
    std::size_t points = 0;
    std::size_t failures = 0;
    while (output.flush() && reader.next()) {
        if (isBlankOrComment(reader.line()))
            continue;
        ++points;
        const Embedded::TransformedPoint answer = answerTo(reader, transformer);
        printer.print(answer.point);
        if (!answer.point && ++failures == 1)
            output.error(fmt::format("line {}", reader.number()), Embedded::utf8FromWide(answer.failure));
    }
    if (failures == 0)
        return ExitStatus::done;
    output.error("standard input", fmt::format("{} of {} points could not be transformed", failures, points));
    return ExitStatus::failed;
}

void noteUsed(const std::string& systems, const Embedded::UsedOperation& used, Output& output)
{
    const std::string name = Embedded::utf8FromWide(used.code.empty() ? used.name : used.code + L" " + used.name);
    const std::string accuracy =
        used.accuracyInMetres ? fmt::format("accuracy {} m", *used.accuracyInMetres) : "accuracy unknown";
    output.note(systems, fmt::format("no transformation is configured; PROJ's best is {}, {}{}", name, accuracy,
                                     used.isBallpark ? "; it is a ballpark one, which takes datums for equal" : ""));
}

std::unique_ptr<Embedded::CoordinateTransformer> transformerFor(const TransformOptions& options, Output& output)
{
    const std::wstring source = wideArgument("SRC", options.source);
    const std::wstring target = wideArgument("DST", options.target);
    const auto drawing = options.drawingOption->count() > 0 ? std::optional(options.drawing) : std::nullopt;
    if (drawing == kStandardStream)
        throw wrongUsage("--drawing", "standard input holds the points");
    const auto configured = configuredTransformation(source, target, drawing);
    Embedded::TransformerResult result = Embedded::makeTransformer(source, target, configured);
    if (result.refusal)
        throw failureOf(*result.refusal, ExitStatus::failed);
    if (!configured)
        noteUsed(options.source + " to " + options.target, result.transformer->operation(), output);
    return std::move(result.transformer);
}

ExitStatus runTransform(const TransformOptions& options, Output& output)
{
    const auto transformer = withFailureDocument(nullptr, DocumentedFailures::allButWrongUsage, output,
                                                 [&] { return transformerFor(options, output); });
    PointPrinter printer(transformer->targetUnits(), output);
    try {
        const ExitStatus status = transformLines(*transformer, printer, output);
        printer.finish();
        return status;
    } catch (const Failure&) { // the points cannot be read to their end
        printer.finish();
        throw;
    }
}

} // namespace

Command declareTransform(CLI::App& program)
{
    auto options = std::make_shared<TransformOptions>();
    CLI::App* app = addCommand(
        program, {"transform",
                  "Transform points from one system to another",
                  {"transform [OPTIONS] SRC DST < POINTS"},
                  "A point is a line of x y or x y z in the order of the system's own axes; empty lines and\n"
                  "lines that begin with # are skipped. One that cannot be transformed is answered with *,\n"
                  "and the exit status is 1 then."});
    addArgument(*app, "SRC", options->source, "the code of the points' system")->required();
    addArgument(*app, "DST", options->target, "the code of the system to transform to")->required();
    options->drawingOption =
        addArgument(*app, "--drawing FILE", options->drawing, "the drawing whose configuration goes before the user's");
    return {app, [options](Output& output) { return runTransform(*options, output); }};
}

} // namespace Orvelcs
