#include "orvelcs/drawing/configured_transformation.h"

#include "coordsys/orvel_transformation_config.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/config_store.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/loaded_module.h"
#include "storage/host_holders.h"
#include "storage/library_holder.h"
#include "transformation/configured_transformation.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

using Info = Orvel::LibraryObject<CoordinateSystem::TransformationInfo>;

/// The module asks the user's configuration only where the drawing's does not answer.
bool drawingAnswers(const std::wstring& source, const std::wstring& target)
{
    wchar_t* text = nullptr;
    const bool isRead =
        CoordinateSystem::GetCsTransformationConfig(text, CoordinateSystem::CsTransformationConfigTargetType::Drawing);
    const Orvel::HostString owned(isRead ? text : nullptr);
    return owned && Orvel::FindConfiguredTransformation(source.c_str(), target.c_str(), text);
}

/// An item of the opposite direction answers when the catalog says that its definition is reversible. The module takes
/// a catalog that cannot be read for one that says no.
void requireAnswerForOpposite(const std::wstring& source, const std::wstring& target)
{
    Info opposite;
    opposite.reset(CoordinateSystem::GetCsConfiguredTransformationInfo(target.c_str(), source.c_str()));
    if (!opposite)
        return;
    const auto status = statusOfOperation(opposite->GetName(), opposite->GetKind());
    if (!isCatalogAnswer(status))
        throw Failure(Embedded::utf8FromWide(opposite->GetName()), describeCatalogFailure(status));
}

} // namespace

std::optional<Embedded::ConfiguredOperation> configuredTransformation(const std::wstring& source,
                                                                      const std::wstring& target,
                                                                      const std::optional<std::string>& drawing,
                                                                      const Output& output)
{
    const LoadedModule module;
    std::optional<OpenDrawing> current;
    if (drawing) {
        current.emplace(*drawing, Embedded::DrawingAccess::reading, output);
        require(*drawing, current->load());
    }
    if (!drawing || !drawingAnswers(source, target))
        checkUserConfig();
    Info info;
    info.reset(CoordinateSystem::GetCsConfiguredTransformationInfo(source.c_str(), target.c_str()));
    if (drawing)
        require(*drawing, current->loadingResult());
    if (!info) {
        requireAnswerForOpposite(source, target);
        return std::nullopt;
    }
    return Embedded::ConfiguredOperation{info->GetName(), info->GetKind()};
}

} // namespace Orvelcs
