#include "orvelcs/output/operation_description.h"

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/display_text.h"

namespace Orvelcs {
namespace {

Json nullIfEmpty(const std::wstring& text)
{
    return text.empty() ? Json(nullptr) : Json(Embedded::utf8FromWide(text));
}

Json gridsAsJson(const Embedded::CatalogOperation& operation)
{
    Json grids = Json::array();
    for (const Embedded::OperationGrid& grid : operation.grids)
        grids.push_back({{"name", Embedded::utf8FromWide(grid.name)},
                         {"available", grid.isInstalled},
                         {"file", nullIfEmpty(grid.file)},
                         {"package", nullIfEmpty(grid.package)},
                         {"url", nullIfEmpty(grid.url)}});
    return grids;
}

std::string gridText(const Embedded::OperationGrid& grid)
{
    const std::string name = "grid " + oneLine(grid.name);
    if (grid.isInstalled)
        return name + ": installed" + (grid.file.empty() ? "" : " as " + oneLine(grid.file));
    return name + ": not installed" + (grid.package.empty() ? "" : ", in " + oneLine(grid.package)) +
           (grid.url.empty() ? "" : ", " + oneLine(grid.url));
}

} // namespace

Json boundsAsJson(const std::optional<Embedded::GeographicBounds>& bounds)
{
    return bounds ? Json({bounds->west, bounds->south, bounds->east, bounds->north}) : Json(nullptr);
}

Json catalogOperationAsJson(const Embedded::CatalogOperation& operation)
{
    const bool isForward = operation.direction == Embedded::OperationDirection::forward;
    return {{"code", nullIfEmpty(operation.code)},
            {"name", Embedded::utf8FromWide(operation.name)},
            {"kind", operation.code.empty() ? Json(nullptr) : Json(operation.kind)},
            {"accuracy", jsonValue(operation.accuracyInMetres)},
            {"areaOfUse", nullIfEmpty(operation.areaOfUse)},
            {"bounds", boundsAsJson(operation.bounds)},
            {"direction", isForward ? "forward" : "inverse"},
            {"reversible", operation.isReversible},
            {"usable", operation.isUsable()},
            {"grids", gridsAsJson(operation)}};
}

std::string accuracyText(const Embedded::CatalogOperation& operation)
{
    return operation.accuracyInMetres ? fmt::format("{} m", *operation.accuracyInMetres) : "accuracy unknown";
}

void printAreaAndGrids(const Embedded::CatalogOperation& operation, Output& output)
{
    if (!operation.areaOfUse.empty())
        printDetail(oneLine(operation.areaOfUse), output);
    for (const Embedded::OperationGrid& grid : operation.grids)
        printDetail(gridText(grid), output);
}

void printDetail(const std::string& text, Output& output)
{
    output.line("    " + text);
}

} // namespace Orvelcs
