#include "orvelcs/output/transform_summary.h"

#include <algorithm>
#include <span>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/output/point_printer.h"

namespace Orvelcs {
namespace {

std::string operationLabel(const Embedded::UsedOperation& operation)
{
    const std::string name =
        Embedded::utf8FromWide(operation.code.empty() ? operation.name : operation.code + L" " + operation.name);
    return operation.accuracyInMetres ? fmt::format("{}, accuracy {} m", name, *operation.accuracyInMetres)
                                      : name + ", accuracy unknown";
}

std::string pointsText(std::size_t points)
{
    return fmt::format("{} {}", points, points == 1 ? "point" : "points");
}

bool isDownloadable(const Embedded::MissingGrid& missing)
{
    return !missing.grid.url.empty();
}

std::string downloadCommand(const Embedded::MissingGrid& missing)
{
    return "projsync --file " + Embedded::utf8FromWide(missing.grid.name);
}

/// Of one operation, which needs all of them.
std::string describeMissingGrids(std::span<const Embedded::MissingGrid> missing)
{
    std::vector<std::string> names;
    std::vector<std::string> commands;
    for (const Embedded::MissingGrid& each : missing) {
        names.push_back(Embedded::utf8FromWide(each.grid.name));
        commands.push_back(downloadCommand(each));
    }
    const bool isOne = missing.size() == 1;
    const std::string problem = fmt::format("the {} {} {} not installed; {} would allow {}", isOne ? "grid" : "grids",
                                            fmt::join(names, " and "), isOne ? "is" : "are", isOne ? "it" : "they",
                                            operationLabel(missing.front().operation));
    const std::string folder = Embedded::gridFolder();
    if (!std::ranges::all_of(missing, isDownloadable))
        return fmt::format("{}; PROJ offers no download; {} in {}", problem, isOne ? "it belongs" : "they belong",
                           folder);
    return fmt::format("{}; {} {} into {}", problem, fmt::join(commands, " and "), isOne ? "puts it" : "put them",
                       folder);
}

Json gridAsJson(const Embedded::MissingGrid& missing)
{
    Json json = {{"name", Embedded::utf8FromWide(missing.grid.name)}};
    const Json operation = operationAsJson(missing.operation);
    json["operation"] = operation["name"];
    json["code"] = operation["code"];
    json["accuracy"] = operation["accuracy"];
    json["command"] = isDownloadable(missing) ? Json(downloadCommand(missing)) : Json(nullptr);
    json["folder"] = Embedded::gridFolder();
    return json;
}

} // namespace

TransformSummary::TransformSummary(std::string systems, bool isConfigured,
                                   const Embedded::CoordinateTransformer& transformer)
    : systems_(std::move(systems)), isConfigured_(isConfigured), transformer_(transformer)
{
}

void TransformSummary::count(const Embedded::TransformedPoint& result, bool hasEpoch)
{
    if (!result.point)
        return;
    if (points_.size() <= result.operation)
        points_.resize(result.operation + 1);
    ++points_[result.operation];
    ++transformed_;
    withoutEpoch_ += !hasEpoch && transformer_.operations()[result.operation].isTimeDependent ? 1U : 0U;
}

/// A block of points that a failure cuts short may have used more.
std::size_t TransformSummary::countedOperations() const
{
    return transformer_.choosesForEachPoint() ? points_.size() : transformer_.operations().size();
}

std::size_t TransformSummary::pointsThrough(std::size_t operation) const
{
    return operation < points_.size() ? points_[operation] : 0;
}

void TransformSummary::noteBefore(Output& output) const
{
    if (Embedded::isGridNetworkEnabled())
        output.note(systems_, "PROJ may read grids over the network, since PROJ_NETWORK says so");
    if (isConfigured_ || transformer_.choosesForEachPoint())
        return;
    const Embedded::UsedOperation& operation = transformer_.operations().front();
    const std::string text = "no transformation is configured; PROJ uses " + operationLabel(operation);
    if (operation.isBallpark)
        output.importantNote(systems_, text + "; it is a ballpark one, which takes datums for equal");
    else
        output.note(systems_, text);
}

void TransformSummary::noteAfter(Output& output) const
{
    if (transformer_.choosesForEachPoint()) {
        noteChoices(output);
        noteBallparks(output);
    }
    noteMissingGrids(output);
    noteMissingEpochs(output);
}

void TransformSummary::noteChoices(Output& output) const
{
    std::vector<std::string> choices;
    for (std::size_t index = 0; index < countedOperations(); ++index)
        choices.push_back(
            fmt::format("{} ({})", operationLabel(transformer_.operations()[index]), pointsText(pointsThrough(index))));
    output.note(systems_, fmt::format("no transformation is configured; PROJ chooses for each point{}{}",
                                      choices.empty() ? "" : ": ", fmt::join(choices, "; ")));
}

void TransformSummary::noteBallparks(Output& output) const
{
    std::vector<std::string> names;
    std::size_t points = 0;
    for (std::size_t index = 0; index < countedOperations(); ++index) {
        const Embedded::UsedOperation& operation = transformer_.operations()[index];
        if (!operation.isBallpark)
            continue;
        points += pointsThrough(index);
        names.push_back(Embedded::utf8FromWide(operation.name));
    }
    if (points > 0)
        output.importantNote(systems_, fmt::format("{} of {} went through a ballpark operation, which takes datums for "
                                                   "equal: {}",
                                                   points, pointsText(transformed_), fmt::join(names, "; ")));
}

void TransformSummary::noteMissingGrids(Output& output) const
{
    constexpr int kMostNotes = 5;
    const std::vector<Embedded::MissingGrid>& missing = transformer_.missingGrids();
    int notes = 0;
    for (auto first = missing.begin(); first != missing.end();) {
        if (notes++ == kMostNotes) {
            output.note(systems_, fmt::format("{} more grids that are not installed would allow better operations; "
                                              "--json names them",
                                              missing.end() - first));
            return;
        }
        const auto isOfAnother = [&](const auto& other) { return other.operation.name != first->operation.name; };
        const auto end = std::find_if(first, missing.end(), isOfAnother);
        output.note(systems_, describeMissingGrids({first, end}));
        first = end;
    }
}

void TransformSummary::noteMissingEpochs(Output& output) const
{
    if (withoutEpoch_ > 0)
        output.note(systems_, fmt::format("{} of {} went through an operation that depends on time, and had no epoch; "
                                          "give it with --epoch or in a fourth column",
                                          withoutEpoch_, pointsText(transformed_)));
}

Json TransformSummary::asJson() const
{
    Json operations = Json::array();
    for (std::size_t index = 0; index < countedOperations(); ++index) {
        operations.push_back(operationAsJson(transformer_.operations()[index]));
        operations.back()["points"] = pointsThrough(index);
    }
    Json grids = Json::array();
    for (const Embedded::MissingGrid& missing : transformer_.missingGrids())
        grids.push_back(gridAsJson(missing));
    return {{"operations", std::move(operations)},
            {"missingGrids", std::move(grids)},
            {"network", Embedded::isGridNetworkEnabled()},
            {"epochMissing", withoutEpoch_ > 0}};
}

} // namespace Orvelcs
