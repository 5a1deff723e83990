#include "embedded/spatial_reference/operations/operation_facts.h"

#include <algorithm>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

/// The operation itself. If PROJ composed it of conversions and one other step, that step.
ProjObject catalogOperationWithin(const PJ* operation)
{
    std::vector<ProjObject> steps = operationSteps(operation);
    std::erase_if(steps, [](const auto& step) { return proj_get_type(step.get()) == PJ_TYPE_CONVERSION; });
    const bool isStep = codeOfObject(operation).empty() && steps.size() == 1;
    return isStep ? std::move(steps.front()) : ProjObject(proj_clone(projContext(), operation));
}

} // namespace

std::vector<OperationGrid> usedGrids(const PJ* operation)
{
    const auto text = [](const char* utf8) { return wideFromUtf8(utf8 ? utf8 : ""); };
    std::vector<OperationGrid> grids;
    const int count = proj_coordoperation_get_grid_used_count(projContext(), operation);
    for (int index = 0; index < count; ++index) {
        const char* name = nullptr;
        const char* file = nullptr;
        const char* package = nullptr;
        const char* url = nullptr;
        int isInstalled = 0;
        if (proj_coordoperation_get_grid_used(projContext(), operation, index, &name, &file, &package, &url, nullptr,
                                              nullptr, &isInstalled))
            grids.push_back({text(name), isInstalled != 0, text(url), text(package), text(file)});
    }
    return grids;
}

std::string describeMissingGrid(const OperationGrid& grid)
{
    return "needs the grid " + utf8FromWide(grid.name) + ", which is not installed" +
           (grid.url.empty() ? "" : "; download it from " + utf8FromWide(grid.url));
}

std::optional<double> accuracyInMetres(const PJ* operation)
{
    const double metres = proj_coordoperation_get_accuracy(projContext(), operation);
    if (metres >= 0)
        return metres;
    const bool isExact = std::ranges::all_of(operationSteps(operation), [](const ProjObject& step) {
        return proj_get_type(step.get()) == PJ_TYPE_CONVERSION;
    });
    return isExact ? std::optional(0.0) : std::nullopt;
}

bool isInstantiable(const PJ* operation)
{
    return proj_coordoperation_is_instantiable(projContext(), operation) != 0;
}

bool isApplicable(PJ* operation, OperationDirection direction)
{
    return isInstantiable(operation) &&
           (direction == OperationDirection::forward || proj_pj_info(operation).has_inverse != 0);
}

bool isBallpark(const PJ* operation)
{
    return proj_coordoperation_has_ballpark_transformation(projContext(), operation) != 0;
}

bool isTimeDependent(PJ* operation)
{
    // PROJ has no call for this. The definition of such an operation has a reference epoch or a model of motion.
    const std::string_view definition = proj_pj_info(operation).definition;
    return definition.find("t_epoch=") != std::string_view::npos ||
           definition.find("proj=defmodel") != std::string_view::npos;
}

void setArea(CatalogOperation& operation, const PJ* object)
{
    const auto area = areaOfUse(object);
    if (!area)
        return;
    operation.areaOfUse = wideFromUtf8(area->name);
    operation.bounds = {.west = area->west, .south = area->south, .east = area->east, .north = area->north};
}

UsedOperation describeOperation(PJ* operation)
{
    const ProjObject catalogOperation = catalogOperationWithin(operation);
    const bool isInverse = codeOfObject(catalogOperation.get()).find("INVERSE(") != std::string::npos;
    return {.code = wideFromUtf8(originalCode(catalogOperation.get())),
            .name = wideFromUtf8(proj_get_name(operation)),
            .accuracyInMetres = accuracyInMetres(operation),
            .isBallpark = isBallpark(operation),
            .isTimeDependent = isTimeDependent(operation),
            .direction = isInverse ? OperationDirection::inverse : OperationDirection::forward};
}

std::vector<ProjObject> operationSteps(const PJ* operation)
{
    std::vector<ProjObject> steps;
    if (proj_get_type(operation) != PJ_TYPE_CONCATENATED_OPERATION) {
        steps.emplace_back(proj_clone(projContext(), operation));
        return steps;
    }
    const int count = proj_concatoperation_get_step_count(projContext(), operation);
    for (int index = 0; index < count; ++index)
        steps.emplace_back(proj_concatoperation_get_step(projContext(), operation, index));
    return steps;
}

} // namespace Embedded
