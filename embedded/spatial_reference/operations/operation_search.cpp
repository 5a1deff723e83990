#include "embedded/spatial_reference/operations/operation_search.h"

#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

struct SearchRelease {
    void operator()(PJ_OPERATION_FACTORY_CONTEXT* search) const { proj_operation_factory_context_destroy(search); }
};
using SearchContext = std::unique_ptr<PJ_OPERATION_FACTORY_CONTEXT, SearchRelease>;

SearchContext searchContext(OperationSearch search)
{
    PJ_CONTEXT* context = projContext();
    SearchContext settings(proj_create_operation_factory_context(context, "any"));
    auto* raw = settings.get();
    proj_operation_factory_context_set_spatial_criterion(context, raw, PROJ_SPATIAL_CRITERION_PARTIAL_INTERSECTION);
    proj_operation_factory_context_set_grid_availability_use(context, raw, PROJ_GRID_AVAILABILITY_USED_FOR_SORTING);
    proj_operation_factory_context_set_use_proj_alternative_grid_names(context, raw, 1);
    if (search == OperationSearch::directOnly) {
        proj_operation_factory_context_set_crs_extent_use(context, raw, PJ_CRS_EXTENT_NONE);
        proj_operation_factory_context_set_discard_superseded(context, raw, 0);
        proj_operation_factory_context_set_allow_use_intermediate_crs(context, raw, PROJ_INTERMEDIATE_CRS_USE_NEVER);
        proj_operation_factory_context_set_allow_ballpark_transformations(context, raw, 0);
    }
    return settings;
}

} // namespace

std::vector<ProjObject> searchOperations(const PJ* source, const PJ* target, OperationSearch search)
{
    const CatalogReadCheck check;
    const SearchContext settings = searchContext(search);
    const ProjList list(proj_create_operations(projContext(), source, target, settings.get()));
    requireReadable(check.finish());
    return objectsOf(list);
}

} // namespace Embedded
