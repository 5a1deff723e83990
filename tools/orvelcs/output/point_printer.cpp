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

PointPrinter::PointPrinter(const std::vector<Embedded::AxisUnit>& axes, bool withOperations, const Json& head,
                           Output& output)
    : decimals_(decimalsFor(axes)), withOperations_(withOperations), output_(output)
{
    if (output_.json())
        output_.write(fmt::format("{{{},\n  \"points\": [", formatMembers(head)));
}

void PointPrinter::print(const Embedded::CoordinatePoint* point, const Embedded::UsedOperation* used)
{
    text_.clear();
    if (output_.json())
        appendElement(point, used);
    else
        appendLine(point, used);
    output_.write(text_);
}

void PointPrinter::appendLine(const Embedded::CoordinatePoint* point, const Embedded::UsedOperation* used)
{
    if (point == nullptr)
        text_ += '*';
    else
        appendNumbers(*point, decimals_, " ", text_);
    if (withOperations_ && used != nullptr)
        text_ += fmt::format("\t{}\t{}", oneLine(used->code), oneLine(used->name));
    text_ += '\n';
}

void PointPrinter::appendElement(const Embedded::CoordinatePoint* point, const Embedded::UsedOperation* used)
{
    text_ += isFirst_ ? "\n    " : ",\n    ";
    isFirst_ = false;
    if (!withOperations_)
        return appendArray(point);
    text_ += R"({"point": )";
    appendArray(point);
    text_ += fmt::format(R"(, "operation": {}}})", (used != nullptr ? operationAsJson(*used) : Json(nullptr)).dump());
}

void PointPrinter::appendArray(const Embedded::CoordinatePoint* point)
{
    if (point == nullptr) {
        text_ += "null";
        return;
    }
    text_ += '[';
    appendNumbers(*point, decimals_, ", ", text_);
    text_ += ']';
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
