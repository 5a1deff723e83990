#include "embedded/spatial_reference/operations/coordinate_transformer.h"

#include "embedded/spatial_reference/operations/configured_pipeline.h"
#include "embedded/spatial_reference/operations/operation_refused.h"
#include "embedded/spatial_reference/operations/proj_transformer.h"

namespace Embedded {

CoordinateTransformer::CoordinateTransformer(std::vector<AxisUnit> targetUnits) : targetUnits_(std::move(targetUnits))
{
}

CoordinateTransformer::~CoordinateTransformer() = default;

TransformerResult makeTransformer(std::wstring_view sourceCode, std::wstring_view targetCode,
                                  const std::optional<ConfiguredOperation>& configured)
{
    try {
        SystemParts source = partsOfCatalogSystem(sourceCode);
        SystemParts target = partsOfCatalogSystem(targetCode);
        if (configured)
            return {configuredPipeline(source, target, *configured), std::nullopt};
        return {std::make_unique<ProjTransformer>(std::move(source), std::move(target)), std::nullopt};
    } catch (OperationRefused& refused) {
        return {nullptr, std::move(refused.refusal)};
    }
}

bool isGridNetworkEnabled()
{
    return proj_context_is_network_enabled(projContext()) != 0;
}

std::string gridFolder()
{
    constexpr int kDoNotMakeIt = 0;
    const char* folder = proj_context_get_user_writable_directory(projContext(), kDoNotMakeIt);
    return folder ? folder : "";
}

} // namespace Embedded
