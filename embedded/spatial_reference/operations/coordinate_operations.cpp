#include "embedded/spatial_reference/operations/coordinate_operations.h"

#include <algorithm>
#include <limits>
#include <map>
#include <tuple>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/catalog/catalog_operations.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/operations/operation_facts.h"
#include "embedded/spatial_reference/operations/operation_index.h"
#include "embedded/spatial_reference/operations/operation_list.h"
#include "embedded/spatial_reference/operations/operation_search.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

/// The source and the target as the index of operations names them.
class SystemPair {
public:
    SystemPair(const SystemParts& source, const SystemParts& target)
        : sourceDatums_(indexedDatumCodes(source.datum.get())),
          targetDatums_(indexedDatumCodes(target.datum.get())),
          sourceVertical_(source.vertical),
          targetVertical_(target.vertical)
    {
    }

    std::optional<OperationDirection> direction(const IndexedOperation& operation) const
    {
        if (matches(operation.source, operation.target))
            return OperationDirection::forward;
        if (matches(operation.target, operation.source))
            return OperationDirection::inverse;
        return std::nullopt;
    }

    /// Returns whether the operation connects the datum with itself and leaves heights alone. Such an operation is of
    /// use only between exactly its systems.
    bool isWithinDatum(const IndexedOperation& operation) const
    {
        return sourceDatums_.contains(operation.source.datum) && sourceDatums_.contains(operation.target.datum) &&
               operation.source.vertical.empty() && operation.target.vertical.empty();
    }

private:
    bool matches(const OperationEnd& from, const OperationEnd& to) const
    {
        return sourceDatums_.contains(from.datum) && targetDatums_.contains(to.datum) &&
               heightsMatch(from.vertical, to.vertical, sourceVertical_, targetVertical_);
    }

    std::set<std::string> sourceDatums_;
    std::set<std::string> targetDatums_;
    std::string sourceVertical_;
    std::string targetVertical_;
};

/// The operation with its grids as PROJ names them. Name and reversibility are those of the catalog's own operation.
std::optional<CatalogOperation> catalogOperation(const IndexedOperation& indexed, OperationDirection direction)
{
    const auto loaded = loadOperation(wideFromUtf8(indexed.code.text()).c_str(), indexed.type);
    const ProjObject object = operationWithInstalledGrids(indexed.code);
    if (!loaded || !object)
        return std::nullopt;
    CatalogOperation operation{.code = loaded->code,
                               .name = loaded->name,
                               .kind = indexed.type == DefinitionType::path ? transformationPath : transformationSingle,
                               .accuracyInMetres = accuracyInMetres(object.get()),
                               .direction = direction,
                               .isReversible = loaded->reversible,
                               .grids = usedGrids(object.get())};
    setArea(operation, object.get());
    operation.isImplemented = !operation.hasAllGrids() || isApplicable(object.get(), direction);
    return operation;
}

using Ranks = std::map<std::string, std::size_t>;

/// The places of the operations, by their original codes, in PROJ's list for the geodetic systems of the two.
Ranks ranksBetween(const SystemParts& source, const SystemParts& target)
{
    const ProjObject from(proj_crs_get_geodetic_crs(projContext(), source.horizontal.get()));
    const ProjObject to(proj_crs_get_geodetic_crs(projContext(), target.horizontal.get()));
    Ranks ranks;
    for (const ProjObject& operation : searchOperations(from.get(), to.get(), OperationSearch::directOnly))
        ranks.try_emplace(originalCode(operation.get()), ranks.size());
    return ranks;
}

auto sortKey(const CatalogOperation& operation, const Ranks& ranks)
{
    const auto rank = ranks.find(utf8FromWide(operation.code));
    return std::tuple(!operation.isUsable(), rank == ranks.end() ? ranks.size() : rank->second,
                      operation.accuracyInMetres.value_or(std::numeric_limits<double>::infinity()),
                      catalogOrder(operation.code));
}

std::vector<CatalogOperation> sorted(std::vector<CatalogOperation> operations, const Ranks& ranks)
{
    std::ranges::sort(operations, {}, [&](const CatalogOperation& operation) { return sortKey(operation, ranks); });
    return operations;
}

} // namespace

std::vector<CatalogOperation> listOperations(const SystemParts& source, const SystemParts& target)
{
    const SystemPair pair(source, target);
    const Ranks ranks = ranksBetween(source, target);
    const CatalogReadCheck check;
    std::vector<CatalogOperation> operations;
    for (const IndexedOperation& indexed : indexedOperations()) {
        const auto direction = pair.direction(indexed);
        if (!direction || (pair.isWithinDatum(indexed) && !ranks.contains(indexed.code.text())))
            continue;
        if (auto operation = catalogOperation(indexed, *direction))
            operations.push_back(std::move(*operation));
    }
    requireReadable(check.finish());
    return sorted(std::move(operations), ranks);
}

bool CatalogOperation::hasAllGrids() const
{
    return std::ranges::all_of(grids, &OperationGrid::isInstalled);
}

bool CatalogOperation::isUsable() const
{
    return isImplemented && (direction == OperationDirection::forward || isReversible) && hasAllGrids();
}

Expected<std::vector<CatalogOperation>> operationsBetween(std::wstring_view sourceCode, std::wstring_view targetCode)
{
    return catchError([&] {
        const SystemParts source = loadSystemParts(sourceCode);
        return listOperations(source, loadSystemParts(targetCode));
    });
}

Expected<std::vector<CatalogOperation>> operationsBetween(const CoordinateReferenceSystemDefinition& source,
                                                          const CoordinateReferenceSystemDefinition& target)
{
    return catchError([&] {
        const SystemParts parts = systemParts(source);
        return listOperations(parts, systemParts(target));
    });
}

} // namespace Embedded
