#include "embedded/spatial_reference/operations/missing_grid_search.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/operations/operation_facts.h"
#include "embedded/spatial_reference/operations/operation_search.h"
#include "embedded/spatial_reference/operations/proj_coordinate.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

/// Converts to latitude and longitude in degrees, as areas of use have them.
ProjObject conversionToWgs84(const SystemParts& system)
{
    const ProjObject wgs84 = catalogObject({"EPSG", "4326"}, PJ_CATEGORY_CRS);
    if (!system.isHorizontal() || !wgs84)
        return nullptr;
    return ProjObject(
        proj_create_crs_to_crs_from_pj(projContext(), system.horizontal.get(), wgs84.get(), nullptr, nullptr));
}

std::vector<OperationGrid> gridsToInstall(const PJ* operation)
{
    std::vector<OperationGrid> grids = usedGrids(operation);
    std::erase_if(grids, &OperationGrid::isInstalled);
    return grids;
}

} // namespace

MissingGridSearch::MissingGridSearch(const SystemParts& source, const SystemParts& target)
{
    for (const ProjObject& operation :
         searchOperations(source.whole.get(), target.whole.get(), OperationSearch::everything))
        collect(operation.get());
    std::ranges::stable_sort(
        candidates_, {}, [](const Candidate& candidate) { return candidate.operation.accuracyInMetres.value_or(0); });
    if (!candidates_.empty())
        toWgs84_ = conversionToWgs84(source);
}

void MissingGridSearch::collect(PJ* operation)
{
    std::vector<OperationGrid> missing = gridsToInstall(operation);
    UsedOperation described = missing.empty() ? UsedOperation() : describeOperation(operation);
    auto area = areaOfUse(operation);
    if (missing.empty() || described.isBallpark || !described.accuracyInMetres || !area)
        return;
    const bool isDownloadable = std::ranges::none_of(missing, &std::wstring::empty, &OperationGrid::url);
    candidates_.push_back({std::move(described), std::move(missing), *std::move(area), isDownloadable});
}

std::vector<MissingGrid> MissingGridSearch::gridsFor(const CoordinatePoint& point, const UsedOperation& used)
{
    if (!toWgs84_ || !isBetter(candidates_.front(), used))
        return {};
    const PJ_COORD place = proj_trans(toWgs84_.get(), PJ_FWD, projCoordinate(point));
    const bool isOnEarth = std::isfinite(place.v[0]) && std::isfinite(place.v[1]);
    return isOnEarth ? gridsAt(place.v[0], place.v[1], used) : std::vector<MissingGrid>();
}

std::vector<MissingGrid> MissingGridSearch::gridsAt(double latitude, double longitude, const UsedOperation& used)
{
    std::vector<MissingGrid> grids;
    for (Candidate& candidate : candidates_) {
        if (!isBetter(candidate, used))
            break;
        if (!candidate.area.contains(latitude, longitude))
            continue;
        if (!std::exchange(candidate.isReported, true)) {
            for (const OperationGrid& grid : candidate.missing)
                grids.push_back({grid, candidate.operation});
        }
        if (candidate.isDownloadable)
            break;
    }
    return grids;
}

bool MissingGridSearch::isBetter(const Candidate& candidate, const UsedOperation& used)
{
    return used.isBallpark || !used.accuracyInMetres || *candidate.operation.accuracyInMetres < *used.accuracyInMetres;
}

} // namespace Embedded
