#include "embedded/spatial_reference/operations/coordinate_transformer.h"

#include "embedded/spatial_reference/operations/configured_pipeline.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/operations/proj_transformer.h"

namespace Embedded {

using Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition;

namespace {

std::unique_ptr<CoordinateTransformer> makeBetween(SystemParts source, SystemParts target,
                                                   const std::optional<ConfiguredOperation>& configured)
{
    if (configured)
        return configuredPipeline(source, target, *configured);
    return std::make_unique<ProjTransformer>(std::move(source), std::move(target));
}

} // namespace

CoordinateTransformer::CoordinateTransformer(const SystemParts& source, const SystemParts& target)
    : sourceAxes_(systemAxes(source)),
      targetAxes_(systemAxes(target)),
      needsHeight_(source.isGeocentric()),
      addsHeight_(target.isGeocentric())
{
}

CoordinateTransformer::~CoordinateTransformer() = default;

std::vector<TransformedPoint> CoordinateTransformer::transformAll(std::span<const CoordinatePoint> points)
{
    std::vector<TransformedPoint> results;
    results.reserve(points.size());
    for (const CoordinatePoint& point : points)
        results.push_back(transform(point));
    return results;
}

Expected<std::unique_ptr<CoordinateTransformer>> makeTransformer(std::wstring_view sourceCode,
                                                                 std::wstring_view targetCode,
                                                                 const std::optional<ConfiguredOperation>& configured)
{
    return catchError([&] {
        SystemParts source = loadSystemParts(sourceCode);
        return makeBetween(std::move(source), loadSystemParts(targetCode), configured);
    });
}

Expected<std::unique_ptr<CoordinateTransformer>> makeTransformer(const CoordinateReferenceSystemDefinition& source,
                                                                 const CoordinateReferenceSystemDefinition& target,
                                                                 const std::optional<ConfiguredOperation>& configured)
{
    return catchError([&] {
        SystemParts parts = systemParts(source);
        return makeBetween(std::move(parts), systemParts(target), configured);
    });
}

Expected<void> checkConfiguredOperation(std::wstring_view sourceCode, std::wstring_view targetCode,
                                        const ConfiguredOperation& configured)
{
    return catchError([&] {
        const SystemParts source = loadSystemParts(sourceCode);
        checkFit(source, loadSystemParts(targetCode), configured);
    });
}

bool isGridNetworkEnabled()
{
    return proj_context_is_network_enabled(projContext()) != 0;
}

std::string gridFolder()
{
    constexpr int kDoNotCreate = 0;
    const char* folder = proj_context_get_user_writable_directory(projContext(), kDoNotCreate);
    return folder ? folder : "";
}

} // namespace Embedded
