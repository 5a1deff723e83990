#include "embedded/spatial_reference/operations/candidate_operations.h"

#include <algorithm>
#include <map>
#include <utility>

#include "embedded/spatial_reference/operations/configured_pipeline.h"
#include "embedded/spatial_reference/operations/geographic_system.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/operations/operation_facts.h"
#include "embedded/spatial_reference/operations/operation_list.h"
#include "embedded/spatial_reference/operations/operation_search.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

std::optional<GeographicBounds> boundsOf(const SystemParts& system)
{
    const auto area = areaOfUse(system.whole.get());
    if (!area)
        return std::nullopt;
    return GeographicBounds{.west = area->west, .south = area->south, .east = area->east, .north = area->north};
}

CatalogOperation ownComposition(PJ* object)
{
    CatalogOperation operation{.name = wideFromUtf8(proj_get_name(object)),
                               .kind = transformationNone,
                               .accuracyInMetres = accuracyInMetres(object),
                               .grids = usedGrids(object),
                               .isBallpark = isBallpark(object)};
    setArea(operation, object);
    operation.isImplemented = !operation.hasAllGrids() || isInstantiable(object);
    return operation;
}

void requireUsable(const CatalogOperation& composition)
{
    for (const OperationGrid& grid : composition.grids)
        if (!grid.isInstalled)
            throwOperationError(OperationError::missingGrid, composition.name, describeMissingGrid(grid));
    if (!composition.isImplemented)
        throwOperationError(OperationError::notImplemented, composition.name,
                            "cannot be applied: PROJ does not implement one of its methods");
}

class FoundCandidates : public CandidateOperations {
public:
    FoundCandidates(const SystemParts& source, const SystemParts& target) : source_(source), target_(target)
    {
        sourceArea_ = boundsOf(source);
        targetArea_ = boundsOf(target);
        leavesHeightsOut_ = !source.vertical.empty() || !target.vertical.empty();
        operations_ = listOperations(source, target);
        appendOwnCompositions();
        geod_init(&geodesic_, target_.ellipsoid().semiMajorAxis, target_.ellipsoid().flattening);
    }

    Expected<std::vector<GeographicPoint>> positions(std::size_t operation,
                                                     std::span<const GeographicPoint> points) override
    {
        return catchError([&] { return transform(pipeline(operation), points); });
    }

    std::vector<double> distances(std::span<const GeographicPoint> from,
                                  std::span<const GeographicPoint> to) const override
    {
        std::vector<double> distances(std::min(from.size(), to.size()));
        for (std::size_t index = 0; index < distances.size(); ++index)
            geod_inverse(&geodesic_, from[index].latitude, from[index].longitude, to[index].latitude,
                         to[index].longitude, &distances[index], nullptr, nullptr);
        return distances;
    }

private:
    void appendOwnCompositions()
    {
        const auto isListed = [this](const std::wstring& code) {
            return !code.empty() && std::ranges::find(operations_, code, &CatalogOperation::code) != operations_.end();
        };
        for (ProjObject& object : searchOperations(source_.parts().horizontal.get(), target_.parts().horizontal.get(),
                                                   OperationSearch::everything)) {
            if (isListed(describeOperation(object.get()).code))
                continue;
            compositions_[operations_.size()] = std::move(object);
            operations_.push_back(ownComposition(compositions_[operations_.size()].get()));
        }
    }

    const Pipeline& pipeline(std::size_t operation)
    {
        std::unique_ptr<Pipeline>& pipeline = pipelines_[operation];
        if (!pipeline)
            pipeline = makePipeline(operation);
        return *pipeline;
    }

    std::unique_ptr<Pipeline> makePipeline(std::size_t operation) const
    {
        const CatalogOperation& candidate = operations_[operation];
        const auto composition = compositions_.find(operation);
        if (composition == compositions_.end())
            return configuredPipeline(source_.parts(), target_.parts(), {candidate.code, candidate.kind});
        requireUsable(candidate);
        auto pipeline =
            std::make_unique<Pipeline>(source_.parts(), target_.parts(), UsedOperation(), HeightRule::transform);
        pipeline->append(ProjObject(proj_clone(projContext(), composition->second.get())), PJ_FWD, false);
        return pipeline;
    }

    std::vector<GeographicPoint> transform(const Pipeline& pipeline, std::span<const GeographicPoint> points) const
    {
        std::vector<PJ_COORD> coordinates;
        coordinates.reserve(points.size());
        for (const GeographicPoint& point : points)
            coordinates.push_back(source_.coordinate(point));
        pipeline.transformCoordinates(coordinates);
        std::vector<GeographicPoint> positions;
        positions.reserve(points.size());
        for (const PJ_COORD& coordinate : coordinates)
            positions.push_back(target_.point(coordinate));
        return positions;
    }

    GeographicSystem source_;
    GeographicSystem target_;
    std::map<std::size_t, ProjObject> compositions_;             // by their index among the operations
    std::map<std::size_t, std::unique_ptr<Pipeline>> pipelines_; // made when they are first used
    geod_geodesic geodesic_{};
};

} // namespace

CandidateOperations::~CandidateOperations() = default;

Expected<std::unique_ptr<CandidateOperations>> findCandidateOperations(std::wstring_view sourceCode,
                                                                       std::wstring_view targetCode)
{
    return catchError([&]() -> std::unique_ptr<CandidateOperations> {
        const SystemParts source = loadSystemParts(sourceCode);
        return std::make_unique<FoundCandidates>(source, loadSystemParts(targetCode));
    });
}

Expected<std::unique_ptr<CandidateOperations>>
findCandidateOperations(const CoordinateReferenceSystemDefinition& source,
                        const CoordinateReferenceSystemDefinition& target)
{
    return catchError([&]() -> std::unique_ptr<CandidateOperations> {
        const SystemParts parts = systemParts(source);
        return std::make_unique<FoundCandidates>(parts, systemParts(target));
    });
}

Expected<std::optional<GeographicBounds>> boundsOfUse(const CoordinateReferenceSystemDefinition& system)
{
    return catchError([&] { return boundsOf(systemParts(system)); });
}

} // namespace Embedded
