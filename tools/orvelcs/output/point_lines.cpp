#include "orvelcs/output/point_lines.h"

#include <utility>

#include <fmt/format.h>

#include "orvelcs/cli/failure.h"

namespace Orvelcs {

PointLines::PointLines(PointTask& task, PointPrinter& printer, TransformSummary& summary, PointFailures& failures)
    : task_(task),
      printer_(printer),
      summary_(summary),
      failures_(failures),
      axes_(lineAxes(task.transformer->sourceAxes(), task.isLongitudeFirst)),
      expectsHeader_(task.hasHeader)
{
}

void PointLines::add(const LineReader& reader)
{
    if (reader.number() == 1 && reader.hadByteOrderMark() && task_.columns)
        printer_.printByteOrderMark();
    if (record_.lines > 0)
        return continueRecord(reader);
    if (reader.isTooLong()) {
        record_ = {.text = {}, .firstLine = reader.number(), .lines = 1};
        return refuseRecord(fmt::format("longer than {} bytes", LineReader::kLongestLineInBytes));
    }
    const PointLine line = lineOf(reader);
    if (isBlankOrComment(line.text)) {
        finishBlock();
        return printer_.printOther(line);
    }
    if (task_.columns && task_.columns->endsInQuotes(line.text))
        return openRecord(reader);
    addLine(line);
}

/// Columns keep the end of their line. A line of a point alone is written anew.
PointLine PointLines::lineOf(const LineReader& reader) const
{
    PointLine line{.number = reader.number(), .text = reader.line()};
    const bool hasCarriageReturn = line.text.ends_with('\r');
    if (hasCarriageReturn)
        line.text.remove_suffix(1);
    line.hasCarriageReturn = hasCarriageReturn && task_.columns;
    return line;
}

void PointLines::openRecord(const LineReader& reader)
{
    finishBlock();
    record_ = {.text = std::string(reader.line()), .firstLine = reader.number(), .lines = 1};
}

void PointLines::continueRecord(const LineReader& reader)
{
    record_.text += '\n';
    record_.text += reader.line();
    ++record_.lines;
    if (record_.text.size() > LineReader::kLongestLineInBytes)
        return refuseRecord(fmt::format("a quote is not closed within {} bytes", LineReader::kLongestLineInBytes));
    if (task_.columns->endsInQuotes('"' + std::string(reader.line())))
        return;
    PointLine line{.number = record_.firstLine, .text = record_.text};
    line.hasCarriageReturn = line.text.ends_with('\r');
    if (line.hasCarriageReturn)
        line.text.remove_suffix(1);
    addLine(line);
    finishBlock(); // while the text is there
    record_ = {};
}

void PointLines::refuseRecord(const std::string& reason)
{
    finishBlock();
    ++count_;
    printer_.printUnreadable(record_.lines);
    failures_.add(record_.firstLine, reason);
    record_ = {};
}

void PointLines::addLine(PointLine line)
{
    if (!expectsHeader_)
        return addPoint(line);
    expectsHeader_ = false;
    if (task_.columns)
        task_.columns->readHeader(line.text);
    printer_.printHeader(line);
}

void PointLines::addPoint(PointLine line)
{
    constexpr std::size_t kMostPoints = 128; // more take as long for each
    const bool isFirst = std::exchange(isFirstPoint_, false);
    auto point = task_.columns ? task_.columns->read(line.text, axes_, line.places) : parsePoint(line.text, axes_);
    if (!point) {
        finishBlock();
        if (isFirst && task_.columns && !task_.hasHeader)
            point.error().message += "; --header says that this line names the columns";
        return fail(line, point.error());
    }
    line.epoch = point->epoch;
    if (!point->epoch)
        point->epoch = task_.epoch;
    exchangeAxes(*point, task_.transformer->sourceAxes(), task_.isLongitudeFirst);
    lines_.push_back(line);
    points_.push_back(*point);
    if (points_.size() == kMostPoints)
        finishBlock();
}

void PointLines::finishBlock()
{
    std::vector<Embedded::TransformedPoint> results = task_.transformer->transformAll(points_);
    for (std::size_t index = 0; index < results.size(); ++index)
        report(lines_[index], points_[index], results[index]);
    lines_.clear();
    points_.clear();
}

void PointLines::finish()
{
    finishBlock();
    if (record_.lines > 0)
        refuseRecord("a quote is not closed");
}

void PointLines::fail(const PointLine& line, const Embedded::Error& error)
{
    ++count_;
    printer_.print(line, {Embedded::failure(error)});
    failures_.add(line.number, error.message);
}

void PointLines::report(const PointLine& line, const Embedded::CoordinatePoint& given,
                        Embedded::TransformedPoint& result)
{
    summary_.count(result, given.epoch.has_value());
    if (!result.point)
        return fail(line, result.point.error());
    ++count_;
    result.point->epoch = line.epoch;
    exchangeAxes(*result.point, task_.transformer->targetAxes(), task_.isLongitudeFirst);
    printer_.print(line, result);
    if (task_.lookForMissingGrids)
        lookForMissingGrids(given, result.operation);
}

/// Throws Failure where the catalog cannot be asked.
void PointLines::lookForMissingGrids(const Embedded::CoordinatePoint& given, std::size_t operation)
{
    if (const auto found = task_.transformer->findMissingGrids(given, operation); !found)
        throw Failure(found.error().place, found.error().message);
}

} // namespace Orvelcs
