#include "embedded/spatial_reference/operations/configured_pipeline.h"

#include <tuple>

#include "embedded/spatial_reference/catalog/catalog_operations.h"
#include "embedded/spatial_reference/operations/datum_preserving_conversion.h"
#include "embedded/spatial_reference/operations/operation_facts.h"
#include "embedded/spatial_reference/operations/operation_index.h"
#include "embedded/spatial_reference/operations/operation_refused.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

/// The operation with the systems at its ends.
struct LoadedOperation {
    DefinitionData data; // the catalog's own
    ProjObject object;   // with grids as PROJ names them
    SystemParts source;
    SystemParts target;
};

/// One way of fitting the operation between two systems.
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

std::vector<OperationCandidate> candidatesOf(const std::wstring& name, DefinitionType type)
{
    return type == DefinitionType::path ? pathCandidates(name) : transformationCandidates(name);
}

DefinitionData loadConfigured(const ConfiguredOperation& configured)
{
    const std::wstring& name = configured.codeOrName;
    if (configured.kind != transformationPath && configured.kind != transformationSingle)
        refuse(RefusalReason::doesNotFit, name, "is configured as neither a path nor a transformation");
    const auto type = configured.kind == transformationPath ? DefinitionType::path : DefinitionType::transformation;
    Loaded loaded = loadOperation(name.c_str(), type);
    if (loaded.data)
        return *std::move(loaded.data);
    if (loaded.status != statusNotFound && loaded.status != statusAmbiguous)
        refuse(RefusalReason::catalogUnavailable, name,
               unreadableCatalogMessage(checkCatalog().value_or("PROJ gives nothing for this name")));
    if (loaded.status == statusNotFound)
        refuse(RefusalReason::unknownOperation, name,
               type == DefinitionType::path ? "the catalog has no such path"
                                            : "the catalog has no such transformation");
    const auto candidates = candidatesOf(name, type);
    std::string codes;
    for (const OperationCandidate& candidate : candidates)
        codes += (codes.empty() ? "" : ", ") + utf8FromWide(candidate.code);
    refuse(RefusalReason::ambiguousOperation, name, "is the name of several: " + codes, candidates);
}

SystemParts partsOrNone(PJ* system)
{
    return system ? partsOf(ProjObject(system)) : SystemParts();
}

LoadedOperation loadOperationBetween(const ConfiguredOperation& configured)
{
    DefinitionData data = loadConfigured(configured);
    ProjObject object = operationWithInstalledGrids(*splitCode(data.codeUtf8));
    if (!object)
        refuse(RefusalReason::unknownOperation, data.code, "cannot be made from the catalog");
    SystemParts source = partsOrNone(proj_get_source_crs(projContext(), object.get()));
    SystemParts target = partsOrNone(proj_get_target_crs(projContext(), object.get()));
    return {std::move(data), std::move(object), std::move(source), std::move(target)};
}

std::optional<Fit> fitOf(OperationDirection direction, const SystemParts& source, const SystemParts& operationSource,
                         const SystemParts& operationTarget, const SystemParts& target)
{
    // An operation to or from heights alone leaves the horizontal position in the system of its other end.
    const PJ* entry = (operationSource.isHorizontal() ? operationSource : operationTarget).horizontal.get();
    const PJ* exit = (operationTarget.isHorizontal() ? operationTarget : operationSource).horizontal.get();
    if (!entry || !heightsFit(operationSource.vertical, operationTarget.vertical, source.vertical, target.vertical))
        return std::nullopt;
    auto before = datumPreservingConversion(source.horizontal.get(), entry);
    auto after = before ? datumPreservingConversion(exit, target.horizontal.get()) : std::nullopt;
    if (!after)
        return std::nullopt;
    return Fit{direction, *std::move(before), *std::move(after)};
}

Fit bestFit(const LoadedOperation& operation, const SystemParts& source, const SystemParts& target)
{
    auto forward = fitOf(OperationDirection::forward, source, operation.source, operation.target, target);
    auto inverse = fitOf(OperationDirection::inverse, source, operation.target, operation.source, target);
    if (forward && (!inverse || !operation.data.reversible || forward->cost() <= inverse->cost()))
        return *std::move(forward);
    if (inverse)
        return *std::move(inverse);
    refuse(RefusalReason::doesNotFit, operation.data.code,
           "leads from " + describeObject(operation.source.whole.get()) + " to " +
               describeObject(operation.target.whole.get()) + ", and so does not fit between " +
               describeObject(source.whole.get()) + " and " + describeObject(target.whole.get()));
}

std::string methodOf(const PJ* operation)
{
    const char* name = nullptr;
    if (!proj_coordoperation_get_method_info(projContext(), operation, &name, nullptr, nullptr) || !name)
        return "one of its methods";
    return std::string("its method ") + name;
}

void checkUsable(const LoadedOperation& operation, OperationDirection direction)
{
    const std::wstring& code = operation.data.code;
    if (direction == OperationDirection::inverse && !operation.data.reversible)
        refuse(RefusalReason::notReversible, code,
               "leads from " + describeObject(operation.source.whole.get()) + " to " +
                   describeObject(operation.target.whole.get()) + " and is not reversible");
    for (const OperationGrid& grid : gridsOf(operation.object.get())) {
        if (!grid.isInstalled)
            refuse(RefusalReason::missingGrid, code,
                   "needs the grid " + utf8FromWide(grid.name) + ", which is not installed" +
                       (grid.url.empty() ? "" : "; download it from " + utf8FromWide(grid.url)));
    }
    if (!isApplicable(operation.object.get(), direction))
        refuse(RefusalReason::notImplemented, code,
               "cannot be applied: PROJ does not implement " + methodOf(operation.object.get()) +
                   (direction == OperationDirection::inverse ? " in reverse" : ""));
}

HeightRule heightRuleOf(const LoadedOperation& operation, const SystemParts& source, const SystemParts& target)
{
    if (!operation.source.vertical.empty() || !operation.target.vertical.empty())
        return HeightRule::carried;
    if (source.vertical.empty() && target.vertical.empty())
        return source.hasEllipsoidalHeight() || target.hasEllipsoidalHeight() ? HeightRule::carried : HeightRule::kept;
    if (source.vertical == target.vertical)
        return HeightRule::kept;
    const auto hasHeights = [](const SystemParts& system) {
        return !system.vertical.empty() || system.hasEllipsoidalHeight();
    };
    return hasHeights(source) && hasHeights(target) ? HeightRule::unknown : HeightRule::kept;
}

} // namespace

std::unique_ptr<Pipeline> configuredPipeline(const SystemParts& source, const SystemParts& target,
                                             const ConfiguredOperation& configured)
{
    LoadedOperation operation = loadOperationBetween(configured);
    Fit fit = bestFit(operation, source, target);
    checkUsable(operation, fit.direction);
    const bool isForward = fit.direction == OperationDirection::forward;
    const SystemParts& entry = isForward ? operation.source : operation.target;
    const SystemParts& exit = isForward ? operation.target : operation.source;
    UsedOperation used{.code = operation.data.code,
                       .name = operation.data.name,
                       .accuracyInMetres = accuracyOf(operation.object.get()),
                       .isTimeDependent = isTimeDependent(operation.object.get()),
                       .direction = fit.direction};
    auto chain = std::make_unique<Pipeline>(source, target, std::move(used), heightRuleOf(operation, source, target));
    chain->append(std::move(fit.before.operation), PJ_FWD, !entry.vertical.empty());
    chain->append(std::move(operation.object), isForward ? PJ_FWD : PJ_INV, false);
    chain->append(std::move(fit.after.operation), PJ_FWD, !exit.vertical.empty());
    return chain;
}

} // namespace Embedded
