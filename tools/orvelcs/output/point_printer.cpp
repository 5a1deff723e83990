#include "orvelcs/output/point_printer.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

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

void PointPrinter::print(const std::optional<Embedded::CoordinatePoint>& point, const Embedded::UsedOperation* used)
{
    if (output_.json()) {
        const Json operation = used != nullptr ? operationAsJson(*used) : Json(nullptr);
        const std::string text =
            withOperations_ ? fmt::format(R"({{"point": {}, "operation": {}}})", element(point), operation.dump())
                            : element(point);
        output_.write(fmt::format("{}\n    {}", isFirst_ ? "" : ",", text));
        isFirst_ = false;
    } else if (!point) {
        output_.line("*");
    } else {
        const std::string numbers = fmt::format("{}", fmt::join(formatNumbers(*point, decimals_), " "));
        output_.line(withOperations_ && used != nullptr
                         ? fmt::format("{}\t{}\t{}", numbers, oneLine(used->code), oneLine(used->name))
                         : numbers);
    }
}

void PointPrinter::finish(const Json& tail)
{
    if (output_.json())
        output_.write(fmt::format("{}],{}\n}}\n", isFirst_ ? "" : "\n  ", formatMembers(tail)));
}

std::string PointPrinter::element(const std::optional<Embedded::CoordinatePoint>& point) const
{
    return point ? fmt::format("[{}]", fmt::join(formatNumbers(*point, decimals_), ", ")) : "null";
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
