#include "embedded/spatial_reference/operations/proj_transformer.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/operations/operation_facts.h"
#include "embedded/spatial_reference/operations/proj_coordinate.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

/// Calls PROJ as its own programs do, so that PROJ makes the same choice for each point.
ProjObject chooseWithProj(const SystemParts& source, const SystemParts& target)
{
    const CatalogReadCheck check;
    ProjObject proj(
        proj_create_crs_to_crs_from_pj(projContext(), source.whole.get(), target.whole.get(), nullptr, nullptr));
    requireReadable(check.finish());
    if (!proj)
        throwOperationError(OperationError::noOperation, wideFromUtf8(codeOfObject(source.whole.get())),
                            "nothing leads from here to " + describeObject(target.whole.get()));
    return proj;
}

/// PROJ gives it back.
constexpr PJ_COORD kNoCoordinate = {{HUGE_VAL, HUGE_VAL, HUGE_VAL, HUGE_VAL}};

} // namespace

ProjTransformer::ProjTransformer(SystemParts source, SystemParts target)
    : CoordinateTransformer(source, target),
      source_(std::move(source)),
      target_(std::move(target)),
      proj_(chooseWithProj(source_, target_)),
      choosesForEachPoint_(proj_get_type(proj_.get()) == PJ_TYPE_UNKNOWN) // a set of operations has none
{
    if (!choosesForEachPoint_)
        operations_.push_back(describeOperation(proj_.get()));
}

TransformedPoint ProjTransformer::transform(const CoordinatePoint& point)
{
    if (const auto check = checkPoint(point, needsHeight()); !check)
        return {failure(check.error())};
    proj_errno_reset(proj_.get());
    const PJ_COORD coordinate = proj_trans(proj_.get(), PJ_FWD, projCoordinate(point));
    const auto result = finitePoint(coordinate, point.z.has_value());
    if (!result)
        return {failure(transformError(proj_.get()))};
    return {*result, lastUsedOperation()};
}

// PROJ tells what it used for the last point alone, and of an array not why a point failed.
std::vector<TransformedPoint> ProjTransformer::transformAll(std::span<const CoordinatePoint> points)
{
    if (choosesForEachPoint_)
        return CoordinateTransformer::transformAll(points);
    std::vector<PJ_COORD> coordinates;
    coordinates.reserve(points.size());
    for (const CoordinatePoint& point : points)
        coordinates.push_back(checkPoint(point, needsHeight()) ? projCoordinate(point) : kNoCoordinate);
    transformArray(proj_.get(), PJ_FWD, coordinates);
    std::vector<TransformedPoint> results;
    results.reserve(points.size());
    for (std::size_t index = 0; index < points.size(); ++index) {
        const CoordinatePoint& point = points[index];
        const auto result = finitePoint(coordinates[index], point.z.has_value());
        results.push_back(result ? TransformedPoint{*result} : transform(point));
    }
    return results;
}

std::optional<CoordinatePoint> ProjTransformer::finitePoint(const PJ_COORD& coordinate, bool givenHeight) const
{
    const auto& [x, y, z] = coordinate.xyz;
    const bool hasHeight = givenHeight || addsHeight();
    if (!std::isfinite(x) || !std::isfinite(y) || (hasHeight && !std::isfinite(z)))
        return std::nullopt;
    return CoordinatePoint{x, y, hasHeight ? std::optional(z) : std::nullopt};
}

std::size_t ProjTransformer::lastUsedOperation()
{
    if (!choosesForEachPoint_)
        return 0;
    const PJ_PROJ_INFO info = proj_pj_info(proj_.get());
    if (lastUsed_ < signatures_.size() && isLastUsed(lastUsed_, info))
        return lastUsed_;
    for (lastUsed_ = 0; lastUsed_ < signatures_.size(); ++lastUsed_) {
        if (isLastUsed(lastUsed_, info))
            return lastUsed_;
    }
    const ProjObject operation(proj_trans_get_last_used_operation(proj_.get()));
    if (!operation)
        throw std::bad_alloc(); // PROJ has just used it, so it lacks only memory
    signatures_.push_back({info.description, info.definition});
    operations_.push_back(describeOperation(operation.get()));
    return lastUsed_;
}

bool ProjTransformer::isLastUsed(std::size_t operation, const PJ_PROJ_INFO& info) const
{
    return signatures_[operation].description == info.description &&
           signatures_[operation].definition == info.definition;
}

Expected<void> ProjTransformer::findMissingGrids(const CoordinatePoint& point, std::size_t operation)
{
    return catchError([&] { collectMissingGrids(point, operations_[operation]); });
}

void ProjTransformer::collectMissingGrids(const CoordinatePoint& point, const UsedOperation& used)
{
    if (used.accuracyInMetres == 0.0)
        return;
    if (!missingGridSearch_)
        missingGridSearch_.emplace(source_, target_);
    for (MissingGrid& missing : missingGridSearch_->gridsFor(point, used)) {
        const auto isSame = [&](const MissingGrid& known) { return known.grid.name == missing.grid.name; };
        if (std::ranges::none_of(missingGrids_, isSame))
            missingGrids_.push_back(std::move(missing));
    }
}

} // namespace Embedded
