#include "orvelcs/drawing/transformation_comparison.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

#include "embedded/base/case_folding.h"
#include "embedded/base/degrees.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/catalog_lookup.h"

namespace Orvelcs {
namespace {

using Bounds = Embedded::GeographicBounds;
using Point = Embedded::GeographicPoint;

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

std::string pairText(const SystemPair& pair)
{
    const auto text = [](const std::wstring& code) {
        return code.empty() ? std::string("a text") : Embedded::utf8FromWide(code);
    };
    return text(pair.sourceCode) + " to " + text(pair.targetCode);
}

void refuseEqualSystems(const SystemPair& pair)
{
    const std::string source = Embedded::utf8FromWide(pair.sourceCode);
    if (!source.empty() && Embedded::equalsIgnoringAsciiCase(source, Embedded::utf8FromWide(pair.targetCode)))
        throw wrongUsage(source, "is both systems; a comparison needs two");
}

std::unique_ptr<Embedded::CandidateOperations> findCandidates(const SystemPair& pair)
{
    refuseEqualSystems(pair);
    auto found = pair.definitions ? Embedded::findCandidateOperations(*pair.definitions->first.definition,
                                                                      *pair.definitions->second.definition)
                                  : Embedded::findCandidateOperations(pair.sourceCode, pair.targetCode);
    if (!found)
        throw operationFailure(found.error(), ExitStatus::nothingFound);
    if ((*found)->operations().empty())
        throw Failure(pairText(pair), "nothing leads from one to the other", ExitStatus::nothingFound);
    return *std::move(found);
}

Bounds boundsOf(const Point& point)
{
    return {.west = point.longitude, .south = point.latitude, .east = point.longitude, .north = point.latitude};
}

struct Direction3D {
    double x = 0;
    double y = 0;
    double z = 0;
};

Direction3D directionOf(const Point& point)
{
    const double fromAxis = std::cos(point.latitude * Embedded::kRadiansPerDegree);
    return {fromAxis * std::cos(point.longitude * Embedded::kRadiansPerDegree),
            fromAxis * std::sin(point.longitude * Embedded::kRadiansPerDegree),
            std::sin(point.latitude * Embedded::kRadiansPerDegree)};
}

/// The middle of an area; of several the middle that lies nearest to the middle of them all.
Point middleOf(const std::vector<Bounds>& parts)
{
    Direction3D sum;
    for (const Bounds& part : parts) {
        const Direction3D direction = directionOf(part.middle());
        sum = {sum.x + direction.x, sum.y + direction.y, sum.z + direction.z};
    }
    const auto nearness = [&](const Bounds& part) {
        const Direction3D direction = directionOf(part.middle());
        return sum.x * direction.x + sum.y * direction.y + sum.z * direction.z;
    };
    return std::ranges::max(parts, {}, nearness).middle();
}

Coverage coverageOf(const std::vector<Bounds>& place, const std::optional<Bounds>& area)
{
    if (!area)
        return Coverage::unknown;
    if (std::ranges::all_of(place, [&](const Bounds& part) { return area->contains(part); }))
        return Coverage::all;
    const bool coversSome =
        std::ranges::any_of(place, [&](const Bounds& part) { return Embedded::commonBounds(*area, part).has_value(); });
    return coversSome ? Coverage::part : Coverage::none;
}

enum class RankGroup { coversAll, coversPart, ballpark, outside };

RankGroup groupOf(const Candidate& candidate)
{
    if (candidate.operation.isBallpark)
        return RankGroup::ballpark;
    switch (candidate.coverage) {
    case Coverage::all:
        return RankGroup::coversAll;
    case Coverage::none:
        return RankGroup::outside;
    default:
        return RankGroup::coversPart;
    }
}

auto rankOf(const Candidate& candidate)
{
    const Embedded::CatalogOperation& operation = candidate.operation;
    return std::tuple(groupOf(candidate), !candidate.isUsable && operation.hasAllGrids(),
                      !operation.accuracyInMetres.has_value(), operation.accuracyInMetres.value_or(0), candidate.index);
}

bool isPosition(const Point& point)
{
    return std::isfinite(point.latitude) && std::isfinite(point.longitude);
}

} // namespace

TransformationComparison::TransformationComparison(const SystemPair& pair, const ComparedPlace& place)
    : subject_(pairText(pair)), operations_(findCandidates(pair)), place_(place)
{
    completePlace();
    rank();
    findReference();
}

void TransformationComparison::completePlace()
{
    const auto& source = operations_->sourceArea();
    const auto& target = operations_->targetArea();
    commonArea_ = source && target ? Embedded::commonBounds(*source, *target) : source ? source : target;
    if (place_.parts.empty() && !place_.at) {
        constexpr const char* kPlaceClause = "; --at, --bbox, --points or --area-of says which place matters";
        if (!source && !target)
            throw wrongUsage(subject_, std::string("no area of use is known") + kPlaceClause);
        if (!commonArea_)
            throw Failure(subject_, std::string("the areas of use have nothing in common") + kPlaceClause,
                          ExitStatus::nothingFound);
        place_.at = commonArea_->middle();
    }
    if (place_.parts.empty())
        place_.parts = {boundsOf(*place_.at)};
    if (!place_.at)
        place_.at = middleOf(place_.parts);
}

void TransformationComparison::rank()
{
    const std::vector<Embedded::CatalogOperation>& operations = operations_->operations();
    std::vector<Point> positions(operations.size(), Point{kNoNumber, kNoNumber});
    for (std::size_t index = 0; index < operations.size(); ++index) {
        Candidate candidate{.index = index, .operation = operations[index]};
        candidate.coverage = coverageOf(place_.parts, candidate.operation.bounds);
        const auto position = operations_->positions(index, std::span(&*place_.at, 1));
        candidate.isUsable = position.has_value();
        if (position)
            positions[index] = position->front();
        else
            candidate.reason = position.error().message;
        if (position && !isPosition(positions[index]))
            candidate.reason = "gives no position at the point";
        candidates_.push_back(std::move(candidate));
    }
    std::ranges::sort(candidates_, {}, rankOf);
    for (Candidate& candidate : candidates_) {
        candidate.number = positions_.size() + 1;
        positions_.push_back(positions[candidate.index]);
    }
}

void TransformationComparison::findReference()
{
    const auto first = std::ranges::find_if(positions_, isPosition);
    reference_ = static_cast<std::size_t>(first - positions_.begin());
    if (first != positions_.end())
        measureFrom(candidates_[reference_]);
}

void TransformationComparison::measureFrom(const Candidate& reference)
{
    reference_ = reference.number - 1;
    const std::vector<Point> from(positions_.size(), positions_[reference_]);
    const std::vector<double> distances = operations_->distances(from, positions_);
    for (std::size_t index = 0; index < candidates_.size(); ++index)
        candidates_[index].distance = std::isfinite(distances[index]) ? std::optional(distances[index]) : std::nullopt;
}

std::vector<Point> TransformationComparison::positions(const Candidate& candidate, std::span<const Point> points)
{
    auto positions = operations_->positions(candidate.index, points);
    if (!positions)
        throw Failure(positions.error().place, positions.error().message);
    return *std::move(positions);
}

std::vector<double> TransformationComparison::distances(std::span<const Point> from, std::span<const Point> to) const
{
    return operations_->distances(from, to);
}

} // namespace Orvelcs
