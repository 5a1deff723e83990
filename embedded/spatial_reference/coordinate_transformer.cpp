#include <algorithm>

#include "embedded/spatial_reference/configured_chain.h"
#include "embedded/spatial_reference/operation_facts.h"
#include "embedded/spatial_reference/operation_refused.h"
#include "embedded/spatial_reference/operation_search.h"
#include "embedded/spatial_reference/proj_identifier.h"

namespace Embedded {
namespace {

/// PROJ sorts operations with missing grids behind the others, and does not sort by what is ballpark.
ProjObject bestOperation(const SystemParts& source, const SystemParts& target)
{
    auto operations = searchOperations(source.whole.get(), target.whole.get(), OperationSearch::everything);
    std::erase_if(operations, [](const ProjObject& operation) { return !isInstantiable(operation.get()); });
    const auto best =
        std::ranges::find_if(operations, [](const ProjObject& operation) { return !isBallpark(operation.get()); });
    if (best != operations.end())
        return std::move(*best);
    return operations.empty() ? nullptr : std::move(operations.front());
}

std::unique_ptr<OperationChain> bestChain(const SystemParts& source, const SystemParts& target)
{
    ProjObject operation = bestOperation(source, target);
    if (!operation)
        refuse(RefusalReason::noOperation, wideFromUtf8(codeOfObject(source.whole.get())),
               "nothing leads from here to " + describeObject(target.whole.get()));
    const std::string code = originalCodeOf(operation.get());
    const bool isInverse = codeOfObject(operation.get()).find("INVERSE(") != std::string::npos;
    UsedOperation used{wideFromUtf8(code), wideFromUtf8(proj_get_name(operation.get())), accuracyOf(operation.get()),
                       isBallpark(operation.get()),
                       isInverse ? OperationDirection::inverse : OperationDirection::forward};
    auto chain = std::make_unique<OperationChain>(source, target, std::move(used), HeightRule::carried);
    chain->append(std::move(operation), PJ_FWD, false);
    return chain;
}

} // namespace

CoordinateTransformer::CoordinateTransformer(std::unique_ptr<OperationChain> chain) : chain_(std::move(chain))
{
}

CoordinateTransformer::~CoordinateTransformer() = default;

TransformedPoint CoordinateTransformer::transform(const CoordinatePoint& point) const
{
    return chain_->transform(point);
}

const UsedOperation& CoordinateTransformer::operation() const
{
    return chain_->used();
}

const std::vector<AxisUnit>& CoordinateTransformer::targetUnits() const
{
    return chain_->targetUnits();
}

TransformerResult makeTransformer(std::wstring_view sourceCode, std::wstring_view targetCode,
                                  const std::optional<ConfiguredOperation>& configured)
{
    try {
        const SystemParts source = partsOfCatalogSystem(sourceCode);
        const SystemParts target = partsOfCatalogSystem(targetCode);
        auto chain = configured ? configuredChain(source, target, *configured) : bestChain(source, target);
        return {std::make_unique<CoordinateTransformer>(std::move(chain)), std::nullopt};
    } catch (OperationRefused& refused) {
        return {nullptr, std::move(refused.refusal)};
    }
}

} // namespace Embedded
