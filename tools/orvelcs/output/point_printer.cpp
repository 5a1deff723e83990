#include "orvelcs/output/point_printer.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/output/point_text.h"

namespace Orvelcs {
namespace {

constexpr char kNoPoint = '*';
constexpr std::size_t kSecondAxis = 1;
constexpr std::size_t kHeightAxis = 2;

/// The members without the braces around them, each on lines of its own.
std::string formatMembers(const Json& object)
{
    constexpr int kIndentation = 2;
    const std::string text = object.dump(kIndentation, ' ', false, Json::error_handler_t::replace);
    const std::string_view open = "{";
    const std::string_view close = "\n}";
    return text.substr(open.size(), text.size() - open.size() - close.size());
}

std::string_view lineEnd(const PointLine& line)
{
    return line.hasCarriageReturn ? "\r\n" : "\n";
}

/// Whether the column stays as it is: it is not there, or is a height that is empty or that the result lacks.
bool staysAsItIs(std::size_t axis, const PointLine& line, const Embedded::TransformedPoint& result)
{
    const std::string_view place = line.places[axis];
    if (place.data() == nullptr || axis != kHeightAxis)
        return place.data() == nullptr;
    return result.point ? !result.point->z : place.empty();
}

} // namespace

PointPrinter::PointPrinter(const Embedded::CoordinateTransformer& transformer, const PointLayout& layout, Json head,
                           Output& output, OutputFile* file)
    : transformer_(transformer),
      layout_(layout),
      decimals_(decimalsFor(lineAxes(transformer.targetAxes(), layout.isLongitudeFirst))),
      head_(std::move(head)),
      output_(output),
      file_(file)
{
    if (printsJson())
        output_.write(fmt::format("{{{},\n  \"points\": [", formatMembers(head_)));
}

void PointPrinter::write(std::string_view text)
{
    file_ != nullptr ? file_->write(text) : output_.write(text);
}

void PointPrinter::print(const PointLine& line, const Embedded::TransformedPoint& result)
{
    text_.clear();
    if (printsJson())
        appendElement(result);
    else
        appendLine(line, result);
    write(text_);
}

void PointPrinter::printUnreadable(std::size_t lines)
{
    text_.clear();
    if (printsJson()) {
        appendElement({Embedded::failure(Embedded::Error())});
    } else {
        for (std::size_t line = 0; line < lines; ++line)
            text_.append({kNoPoint, '\n'});
    }
    write(text_);
}

void PointPrinter::printOther(const PointLine& line)
{
    if (!printsJson())
        write(fmt::format("{}{}", line.text, lineEnd(line)));
}

void PointPrinter::printHeader(const PointLine& line)
{
    const std::string more = layout_.withOperations ? operationColumns("operation_code", "operation_name") : "";
    if (!printsJson())
        write(fmt::format("{}{}{}", line.text, more, lineEnd(line)));
}

void PointPrinter::printByteOrderMark()
{
    if (!printsJson())
        write(kByteOrderMark);
}

void PointPrinter::appendLine(const PointLine& line, const Embedded::TransformedPoint& result)
{
    if (layout_.hasColumns)
        appendInPlaces(line, result);
    else if (result.point)
        appendNumbers(*result.point, decimals_, " ", text_);
    else
        text_ += kNoPoint;
    if (layout_.withOperations)
        appendOperation(result);
    text_ += lineEnd(line);
}

void PointPrinter::appendInPlaces(const PointLine& line, const Embedded::TransformedPoint& result)
{
    std::array<std::size_t, std::tuple_size_v<CoordinatePlaces>> axes{0, 1, 2};
    std::ranges::sort(axes, {}, [&](std::size_t axis) { return line.places[axis].data(); });
    const char* rest = line.text.data();
    for (const std::size_t axis : axes) {
        if (staysAsItIs(axis, line, result))
            continue;
        const std::string_view place = line.places[axis];
        text_.append(rest, place.data());
        appendCoordinate(axis, line, result);
        rest = place.data() + place.size();
    }
    text_.append(rest, line.text.data() + line.text.size());
}

void PointPrinter::appendCoordinate(std::size_t axis, const PointLine& line, const Embedded::TransformedPoint& result)
{
    if (!result.point) {
        text_ += kNoPoint;
        return;
    }
    const auto& [x, y, z, epoch] = *result.point;
    appendNumber(axis == kHeightAxis ? *z : axis == kSecondAxis ? y : x, decimals_[axis], text_);
    if (axis != kSecondAxis || !z || line.places[kHeightAxis].data() != nullptr)
        return;
    text_ += layout_.delimiter.value_or(' '); // a height that the point has in its new system
    appendNumber(*z, decimals_[kHeightAxis], text_);
}

// Every line of a table has the same columns. Where blanks stand between them, those would not be seen.
void PointPrinter::appendOperation(const Embedded::TransformedPoint& result)
{
    if (result.point)
        text_ += operationText(result.operation);
    else if (layout_.delimiter)
        text_ += operationColumns("", "");
}

void PointPrinter::appendElement(const Embedded::TransformedPoint& result)
{
    text_ += isFirst_ ? "\n    " : ",\n    ";
    isFirst_ = false;
    if (!layout_.withOperations)
        return appendArray(result);
    text_ += R"({"point": )";
    appendArray(result);
    text_ += R"(, "operation": )";
    text_ += result.point ? operationText(result.operation) : "null";
    text_ += '}';
}

void PointPrinter::appendArray(const Embedded::TransformedPoint& result)
{
    if (!result.point) {
        text_ += "null";
        return;
    }
    text_ += '[';
    appendNumbers(*result.point, decimals_, ", ", text_);
    text_ += ']';
}

const std::string& PointPrinter::operationText(std::size_t operation)
{
    while (operationTexts_.size() <= operation) {
        const Embedded::UsedOperation& used = transformer_.operations()[operationTexts_.size()];
        operationTexts_.push_back(printsJson() ? operationAsJson(used).dump()
                                               : operationColumns(oneLine(used.code), oneLine(used.name)));
    }
    return operationTexts_[operation];
}

std::string PointPrinter::operationColumns(const std::string& code, const std::string& name) const
{
    const char delimiter = layout_.delimiter.value_or('\t');
    return fmt::format("{0}{1}{0}{2}", delimiter, quotedColumn(code, delimiter), quotedColumn(name, delimiter));
}

void PointPrinter::finish(const Json& tail)
{
    if (printsJson())
        return output_.write(fmt::format("{}],{}\n}}\n", isFirst_ ? "" : "\n  ", formatMembers(tail)));
    if (!output_.json())
        return;
    Json document = head_;
    document["points"] = nullptr;
    document.update(tail);
    output_.document(document);
}

Json operationAsJson(const Embedded::UsedOperation& operation)
{
    return {{"code", operation.code.empty() ? Json(nullptr) : Json(Embedded::utf8FromWide(operation.code))},
            {"name", Embedded::utf8FromWide(operation.name)},
            {"accuracy", jsonValue(operation.accuracyInMetres)},
            {"ballpark", operation.isBallpark},
            {"timeDependent", operation.isTimeDependent}};
}

} // namespace Orvelcs
