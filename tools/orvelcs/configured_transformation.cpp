#include "orvelcs/configured_transformation.h"

#include "coordsys/orvel_transformation_config.h"
#include "orvelcs/drawings.h"
#include "orvelcs/loaded_module.h"
#include "storage/library_holder.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

std::optional<Embedded::ConfiguredOperation> configuredTransformation(const std::wstring& source,
                                                                      const std::wstring& target,
                                                                      const std::optional<std::string>& drawing)
{
    const LoadedModule module;
    std::optional<OpenDrawing> current;
    if (drawing) {
        current.emplace(*drawing);
        require(*drawing, current->load());
    }
    Orvel::LibraryObject<CoordinateSystem::TransformationInfo> info;
    info.reset(CoordinateSystem::GetCsConfiguredTransformationInfo(source.c_str(), target.c_str()));
    if (!info)
        return std::nullopt;
    return Embedded::ConfiguredOperation{info->GetName(), info->GetKind()};
}

} // namespace Orvelcs
