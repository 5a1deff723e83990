#include "orvelcs/drawing/comparison_picture.h"

#include <cmath>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/candidate_description.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/output/operation_description.h"

namespace Orvelcs {
namespace {

constexpr std::size_t kMostNodes = 40'000; // 200 by 200

std::string systemTitle(const std::wstring& code, const NamedSystem* named)
{
    std::wstring name;
    if (named != nullptr)
        name = describe(*named).name.value_or(L"");
    else if (const auto entry = catalogEntry(code))
        name = entry->name;
    if (name.empty() || code.empty())
        return oneLine(name.empty() ? code : name);
    return fmt::format("{} ({})", oneLine(name), oneLine(code));
}

bool hasExtent(const GeographicBounds& bounds)
{
    return bounds.south < bounds.north && bounds.west != bounds.east;
}

/// The place, unless it is points; else all of the common area.
GeographicBounds shownArea(const TransformationComparison& comparison)
{
    const auto& common = comparison.commonArea();
    if (!common || !hasExtent(*common))
        throw Failure("--output", "the areas of use have nothing in common that a map could show",
                      ExitStatus::nothingFound);
    const auto& parts = comparison.place().parts;
    if (parts.size() != 1 || !hasExtent(parts.front()))
        return *common;
    const auto shown = Embedded::commonBounds(*common, parts.front());
    if (!shown || !hasExtent(*shown))
        throw Failure("--output", "the place lies outside of the common area of use, which a map could show",
                      ExitStatus::nothingFound);
    return *shown;
}

/// Those that stand above the best one that can be used.
std::vector<PicturedCandidate> lackingCandidates(const TransformationComparison& comparison)
{
    std::vector<PicturedCandidate> lacking;
    for (const Candidate& candidate : comparison.candidates()) {
        if (candidate.isUsable)
            break;
        lacking.push_back(pictureCandidate(candidate));
    }
    return lacking;
}

} // namespace

std::vector<Candidate> bestTwo(const TransformationComparison& comparison)
{
    std::vector<Candidate> best;
    for (const Candidate& candidate : comparison.candidates())
        if (candidate.isUsable && best.size() < 2)
            best.push_back(candidate);
    if (best.size() < 2) {
        const Candidate& first = comparison.candidates().front();
        throw Failure("--output",
                      fmt::format("a picture compares two candidates that can be used, and there is {}{}",
                                  best.empty() ? "none" : "only one",
                                  first.isUsable ? "" : "; " + describeCandidate(first) + " " + first.reason),
                      ExitStatus::nothingFound);
    }
    return best;
}

PicturedPair picturePair(const SystemPair& pair, const TransformationComparison& comparison)
{
    const NamedSystem* const source = pair.definitions ? &pair.definitions->first : nullptr;
    const NamedSystem* const target = pair.definitions ? &pair.definitions->second : nullptr;
    return {.source = systemTitle(pair.sourceCode, source),
            .target = systemTitle(pair.targetCode, target),
            .extent = shownArea(comparison),
            .point = comparison.point(),
            .leavesHeightsOut = comparison.leavesHeightsOut(),
            .lacking = lackingCandidates(comparison)};
}

PicturedCandidate pictureCandidate(const Candidate& candidate)
{
    const Embedded::CatalogOperation& operation = candidate.operation;
    return {.number = candidate.number,
            .code = oneLine(operation.code),
            .name = oneLine(operation.name),
            .accuracy = operation.accuracyInMetres ? accuracyText(operation) : "unknown",
            .area = oneLine(operation.areaOfUse),
            .bounds = operation.bounds,
            .reason = candidate.isUsable ? "" : oneLine(candidate.reason)};
}

PicturedComparison pictureComparison(PicturedPair pair, TransformationComparison& comparison, const Candidate& first,
                                     const Candidate& second)
{
    PicturedComparison pictured{.pair = std::move(pair),
                                .first = pictureCandidate(first),
                                .second = pictureCandidate(second),
                                .distanceAtPoint = std::nullopt,
                                .grid = {.nodes = {}, .metres = {}}};
    pictured.grid.nodes = makeNodeGrid(pictured.pair.extent, kMostNodes);
    const auto distances = [&](std::span<const Embedded::GeographicPoint> points) {
        return comparison.distances(comparison.positions(first, points), comparison.positions(second, points));
    };
    pictured.grid.metres = distances(pictured.grid.nodes.points());
    const double atPoint = distances(std::span(&comparison.point(), 1)).front();
    if (std::isfinite(atPoint))
        pictured.distanceAtPoint = atPoint;
    return pictured;
}

} // namespace Orvelcs
