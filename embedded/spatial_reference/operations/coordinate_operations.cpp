#include <algorithm>
#include <limits>
#include <map>
#include <tuple>

#include "embedded/spatial_reference/catalog/catalog_operations.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"
#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "embedded/spatial_reference/operations/operation_facts.h"
#include "embedded/spatial_reference/operations/operation_index.h"
#include "embedded/spatial_reference/operations/operation_refused.h"
#include "embedded/spatial_reference/operations/operation_search.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

/// The two systems of a question as the index knows them.
class Pair {
public:
    Pair(const SystemParts& source, const SystemParts& target)
        : sourceDatums_(indexedNamesOf(source.datum.get())),
          targetDatums_(indexedNamesOf(target.datum.get())),
          sourceVertical_(source.vertical),
          targetVertical_(target.vertical)
    {
    }

    std::optional<OperationDirection> directionOf(const IndexedOperation& operation) const
    {
        if (matches(operation.source, operation.target))
            return OperationDirection::forward;
        if (matches(operation.target, operation.source))
            return OperationDirection::inverse;
        return std::nullopt;
    }

    /// Whether it leads from a datum to itself and says nothing of heights: of use between its very systems only.
    bool isWithinDatum(const IndexedOperation& operation) const
    {
        return sourceDatums_.contains(operation.source.datum) && sourceDatums_.contains(operation.target.datum) &&
               operation.source.vertical.empty() && operation.target.vertical.empty();
    }

private:
    bool matches(const OperationEnd& from, const OperationEnd& to) const
    {
        return sourceDatums_.contains(from.datum) && targetDatums_.contains(to.datum) &&
               heightsFit(from.vertical, to.vertical, sourceVertical_, targetVertical_);
    }

    std::set<std::string> sourceDatums_;
    std::set<std::string> targetDatums_;
    std::string sourceVertical_;
    std::string targetVertical_;
};

/// With its grids as PROJ names them; name and reversibility are those of the catalog's own operation.
std::optional<CatalogOperation> catalogOperation(const IndexedOperation& indexed, OperationDirection direction)
{
    const Loaded loaded = loadOperation(wideFromUtf8(indexed.code.text()).c_str(), indexed.type);
    const ProjObject object = operationWithInstalledGrids(indexed.code);
    if (!loaded.data || !object)
        return std::nullopt;
    CatalogOperation operation{.code = loaded.data->code,
                               .name = loaded.data->name,
                               .kind = indexed.type == DefinitionType::path ? transformationPath : transformationSingle,
                               .accuracyInMetres = accuracyOf(object.get()),
                               .areaOfUse = areaOfUseOf(object.get()),
                               .direction = direction,
                               .isReversible = loaded.data->reversible,
                               .grids = gridsOf(object.get())};
    const bool hasAllGrids = std::ranges::all_of(operation.grids, &OperationGrid::isInstalled);
    operation.isImplemented = !hasAllGrids || isApplicable(object.get(), direction);
    return operation;
}

using Ranks = std::map<std::string, std::size_t>;

/// By original code, the place in PROJ's list for the geodetic systems below the two.
Ranks ranksBetween(const SystemParts& source, const SystemParts& target)
{
    const ProjObject from(proj_crs_get_geodetic_crs(projContext(), source.horizontal.get()));
    const ProjObject to(proj_crs_get_geodetic_crs(projContext(), target.horizontal.get()));
    Ranks ranks;
    for (const ProjObject& operation : searchOperations(from.get(), to.get(), OperationSearch::directOnly))
        ranks.try_emplace(originalCodeOf(operation.get()), ranks.size());
    return ranks;
}

auto placeOf(const CatalogOperation& operation, const Ranks& ranks)
{
    const auto rank = ranks.find(utf8FromWide(operation.code));
    return std::tuple(!operation.isUsable(), rank == ranks.end() ? ranks.size() : rank->second,
                      operation.accuracyInMetres.value_or(std::numeric_limits<double>::infinity()),
                      catalogOrderOf(operation.code));
}

std::vector<CatalogOperation> sorted(std::vector<CatalogOperation> operations, const Ranks& ranks)
{
    std::ranges::sort(operations, {}, [&](const CatalogOperation& operation) { return placeOf(operation, ranks); });
    return operations;
}

std::vector<CatalogOperation> listed(const SystemParts& source, const SystemParts& target)
{
    const Pair pair(source, target);
    const Ranks ranks = ranksBetween(source, target);
    std::vector<CatalogOperation> operations;
    for (const IndexedOperation& indexed : indexedOperations()) {
        const auto direction = pair.directionOf(indexed);
        if (!direction || (pair.isWithinDatum(indexed) && !ranks.contains(indexed.code.text())))
            continue;
        if (auto operation = catalogOperation(indexed, *direction))
            operations.push_back(std::move(*operation));
    }
    return sorted(std::move(operations), ranks);
}

} // namespace

bool CatalogOperation::isUsable() const
{
    return isImplemented && (direction == OperationDirection::forward || isReversible) &&
           std::ranges::all_of(grids, &OperationGrid::isInstalled);
}

OperationList operationsBetween(std::wstring_view sourceCode, std::wstring_view targetCode)
{
    try {
        const SystemParts source = partsOfCatalogSystem(sourceCode);
        return {listed(source, partsOfCatalogSystem(targetCode)), std::nullopt};
    } catch (OperationRefused& refused) {
        return {{}, std::move(refused.refusal)};
    }
}

} // namespace Embedded
