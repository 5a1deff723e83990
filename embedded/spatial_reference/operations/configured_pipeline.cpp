#include "embedded/spatial_reference/operations/configured_pipeline.h"

#include <tuple>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/catalog/catalog_operations.h"
#include "embedded/spatial_reference/operations/datum_preserving_conversion.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/operations/operation_facts.h"
#include "embedded/spatial_reference/operations/operation_index.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

/// The operation with the systems at its ends.
struct LoadedOperation {
    DefinitionData data; // of the catalog's own operation
    ProjObject object;   // with grids as PROJ names them
    SystemParts source;
    SystemParts target;
};

/// A direction in which the operation fits between two systems, with the conversions that it needs at its ends.
struct Fit {
    OperationDirection direction;
    DatumPreservingConversion before;
    DatumPreservingConversion after;

    auto cost() const
    {
        return std::tuple(before.changesPrimeMeridian + after.changesPrimeMeridian,
                          (before.operation != nullptr) + (after.operation != nullptr));
    }
};

[[noreturn]] void throwLoadError(const Error& error, const std::wstring& name, DefinitionType type)
{
    switch (error.status) {
    case statusNotFound:
        throwOperationError(OperationError::unknownOperation, name,
                            type == DefinitionType::path ? "the catalog has no such path"
                                                         : "the catalog has no such transformation");
    case statusAmbiguous:
        throwOperationError(OperationError::ambiguousOperation, name, error.message);
    default:
        throwOperationError(OperationError::catalogUnavailable, name, unreadableCatalogMessage(error));
    }
}

DefinitionData loadConfigured(const ConfiguredOperation& configured)
{
    const std::wstring& name = configured.codeOrName;
    if (configured.kind != transformationPath && configured.kind != transformationSingle)
        throwOperationError(OperationError::doesNotFit, name, "is configured as neither a path nor a transformation");
    const auto type = configured.kind == transformationPath ? DefinitionType::path : DefinitionType::transformation;
    auto loaded = loadOperation(name.c_str(), type);
    if (!loaded)
        throwLoadError(loaded.error(), name, type);
    return *std::move(loaded);
}

/// The system may be null.
SystemParts splitOptionalSystem(PJ* system)
{
    return system ? splitSystem(ProjObject(system)) : SystemParts();
}

LoadedOperation loadOperationWithEnds(const ConfiguredOperation& configured)
{
    DefinitionData data = loadConfigured(configured);
    ProjObject object = operationWithInstalledGrids(*splitCode(data.codeUtf8));
    if (!object)
        throwOperationError(OperationError::unknownOperation, data.code, "PROJ cannot make it from the catalog");
    SystemParts source = splitOptionalSystem(proj_get_source_crs(projContext(), object.get()));
    SystemParts target = splitOptionalSystem(proj_get_target_crs(projContext(), object.get()));
    return {std::move(data), std::move(object), std::move(source), std::move(target)};
}

/// "leads from EPSG:4275 (NTF) to EPSG:4326 (WGS 84)".
std::string describeEnds(const LoadedOperation& operation)
{
    return "leads from " + describeObject(operation.source.whole.get()) + " to " +
           describeObject(operation.target.whole.get());
}

std::optional<Fit> findFit(OperationDirection direction, const SystemParts& source, const SystemParts& operationSource,
                           const SystemParts& operationTarget, const SystemParts& target)
{
    // An operation to or from heights alone leaves the horizontal position in the system of its other end.
    const PJ* entry = (operationSource.isHorizontal() ? operationSource : operationTarget).horizontal.get();
    const PJ* exit = (operationTarget.isHorizontal() ? operationTarget : operationSource).horizontal.get();
    if (!entry || !heightsMatch(operationSource.vertical, operationTarget.vertical, source.vertical, target.vertical))
        return std::nullopt;
    auto before = datumPreservingConversion(source.horizontal.get(), entry);
    auto after = before ? datumPreservingConversion(exit, target.horizontal.get()) : std::nullopt;
    if (!after)
        return std::nullopt;
    return Fit{direction, *std::move(before), *std::move(after)};
}

Fit bestFit(const LoadedOperation& operation, const SystemParts& source, const SystemParts& target)
{
    auto forward = findFit(OperationDirection::forward, source, operation.source, operation.target, target);
    auto inverse = findFit(OperationDirection::inverse, source, operation.target, operation.source, target);
    if (forward && (!inverse || !operation.data.reversible || forward->cost() <= inverse->cost()))
        return *std::move(forward);
    if (inverse)
        return *std::move(inverse);
    throwOperationError(OperationError::doesNotFit, operation.data.code,
                        describeEnds(operation) + ", and so does not fit between " +
                            describeObject(source.whole.get()) + " and " + describeObject(target.whole.get()));
}

std::string describeMethod(const PJ* operation)
{
    const char* name = nullptr;
    if (!proj_coordoperation_get_method_info(projContext(), operation, &name, nullptr, nullptr) || !name)
        return "one of its methods";
    return std::string("its method ") + name;
}

void checkDirection(const LoadedOperation& operation, OperationDirection direction)
{
    if (direction == OperationDirection::inverse && !operation.data.reversible)
        throwOperationError(OperationError::notReversible, operation.data.code,
                            describeEnds(operation) + " and is not reversible");
}

void checkUsable(const LoadedOperation& operation, OperationDirection direction)
{
    const std::wstring& code = operation.data.code;
    for (const OperationGrid& grid : usedGrids(operation.object.get())) {
        if (!grid.isInstalled)
            throwOperationError(OperationError::missingGrid, code, describeMissingGrid(grid));
    }
    if (!isApplicable(operation.object.get(), direction))
        throwOperationError(OperationError::notImplemented, code,
                            "cannot be applied: PROJ does not implement " + describeMethod(operation.object.get()) +
                                (direction == OperationDirection::inverse ? " in reverse" : ""));
}

HeightRule chooseHeightRule(const LoadedOperation& operation, const SystemParts& source, const SystemParts& target)
{
    if (!operation.source.vertical.empty() || !operation.target.vertical.empty())
        return HeightRule::transform;
    if (source.vertical.empty() && target.vertical.empty())
        return source.hasEllipsoidalHeight() || target.hasEllipsoidalHeight() ? HeightRule::transform
                                                                              : HeightRule::keep;
    if (source.vertical == target.vertical)
        return HeightRule::keep;
    const auto hasHeights = [](const SystemParts& system) {
        return !system.vertical.empty() || system.hasEllipsoidalHeight();
    };
    return hasHeights(source) && hasHeights(target) ? HeightRule::fail : HeightRule::keep;
}

} // namespace

std::unique_ptr<Pipeline> configuredPipeline(const SystemParts& source, const SystemParts& target,
                                             const ConfiguredOperation& configured)
{
    LoadedOperation operation = loadOperationWithEnds(configured);
    Fit fit = bestFit(operation, source, target);
    checkDirection(operation, fit.direction);
    checkUsable(operation, fit.direction);
    const bool isForward = fit.direction == OperationDirection::forward;
    const SystemParts& entry = isForward ? operation.source : operation.target;
    const SystemParts& exit = isForward ? operation.target : operation.source;
    UsedOperation used{.code = operation.data.code,
                       .name = operation.data.name,
                       .accuracyInMetres = accuracyInMetres(operation.object.get()),
                       .isTimeDependent = isTimeDependent(operation.object.get()),
                       .direction = fit.direction};
    auto pipeline =
        std::make_unique<Pipeline>(source, target, std::move(used), chooseHeightRule(operation, source, target));
    pipeline->append(std::move(fit.before.operation), PJ_FWD, !entry.vertical.empty());
    pipeline->append(std::move(operation.object), isForward ? PJ_FWD : PJ_INV, false);
    pipeline->append(std::move(fit.after.operation), PJ_FWD, !exit.vertical.empty());
    return pipeline;
}

void checkFit(const SystemParts& source, const SystemParts& target, const ConfiguredOperation& configured)
{
    const LoadedOperation operation = loadOperationWithEnds(configured);
    checkDirection(operation, bestFit(operation, source, target).direction);
}

} // namespace Embedded
