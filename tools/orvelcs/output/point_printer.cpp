#include "orvelcs/output/point_printer.h"

#include <fmt/format.h>

#include "orvelcs/cli/display_text.h"
#include "orvelcs/output/point_text.h"

namespace Orvelcs {
namespace {

/// The members without the braces around them, each on lines of its own.
std::string formatMembers(const Json& object)
{
    constexpr int kIndentation = 2;
    const std::string text = object.dump(kIndentation, ' ', false, Json::error_handler_t::replace);
    const std::string_view open = "{";
    const std::string_view close = "\n}";
    return text.substr(open.size(), text.size() - open.size() - close.size());
}

} // namespace

PointPrinter::PointPrinter(const Embedded::CoordinateTransformer& transformer, bool withOperations, const Json& head,
                           Output& output)
    : transformer_(transformer),
      decimals_(decimalsFor(transformer.targetAxes().units)),
      withOperations_(withOperations),
      output_(output)
{
    if (output_.json())
        output_.write(fmt::format("{{{},\n  \"points\": [", formatMembers(head)));
}

void PointPrinter::print(const Embedded::TransformedPoint& result)
{
    text_.clear();
    if (output_.json())
        appendElement(result);
    else
        appendLine(result);
    output_.write(text_);
}

void PointPrinter::appendLine(const Embedded::TransformedPoint& result)
{
    if (!result.point)
        text_ += '*';
    else
        appendNumbers(*result.point, decimals_, " ", text_);
    if (withOperations_ && result.point)
        text_ += operationText(result.operation);
    text_ += '\n';
}

void PointPrinter::appendElement(const Embedded::TransformedPoint& result)
{
    text_ += isFirst_ ? "\n    " : ",\n    ";
    isFirst_ = false;
    if (!withOperations_)
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
        operationTexts_.push_back(output_.json() ? operationAsJson(used).dump()
                                                 : fmt::format("\t{}\t{}", oneLine(used.code), oneLine(used.name)));
    }
    return operationTexts_[operation];
}

void PointPrinter::finish(const Json& tail)
{
    if (output_.json())
        output_.write(fmt::format("{}],{}\n}}\n", isFirst_ ? "" : "\n  ", formatMembers(tail)));
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
