#include "orvelcs/drawing/configured_transformation.h"
#include "orvelcs/drawing/holders.h"

#include "coordsys/orvel_transformation_config.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/process.h"
#include "orvelcs/cli/user_options.h"
#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/config_store.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/loaded_module.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

using Info = LibraryObject<CoordinateSystem::TransformationInfo>;

/// Keeps the module from finding the user's settings file.
class HiddenSettingsFile {
public:
    HiddenSettingsFile() : folder_(variable(kUserFolderVariable))
    {
        constexpr const char* kNoFolder = "/dev/null/?"; // no system can have a folder of this name
        if (!setVariable(kUserFolderVariable, kNoFolder))
            throw Failure(kUserFolderVariable, "cannot be set");
    }
    HiddenSettingsFile(const HiddenSettingsFile&) = delete;
    HiddenSettingsFile& operator=(const HiddenSettingsFile&) = delete;
    ~HiddenSettingsFile() { static_cast<void>(setVariable(kUserFolderVariable, folder_)); } // it had this value before

private:
    std::optional<std::string> folder_;
};

Info askModule(const std::wstring& source, const std::wstring& target)
{
    return Info(CoordinateSystem::GetCsConfiguredTransformationInfo(source.c_str(), target.c_str()));
}

/// The module reads the user's settings file after the drawing's configuration. It must not open one that cannot be
/// read, because it would wait for a pipe and use other text than the file holds: then the drawing alone is asked.
/// Throws Failure when such a file would decide.
Info findConfigured(const std::wstring& source, const std::wstring& target, bool hasDrawing)
{
    try {
        checkUserConfig();
    } catch (const Failure&) {
        if (!hasDrawing)
            throw;
        const HiddenSettingsFile hidden;
        if (Info info = askModule(source, target))
            return info;
        throw;
    }
    return askModule(source, target);
}

/// The module uses an item of the opposite direction when the catalog says that its definition is reversible, and
/// ignores the item when the catalog cannot be read. Throws Failure in that case.
void checkOppositeItem(const std::wstring& source, const std::wstring& target)
{
    const Info opposite = askModule(target, source);
    if (!opposite)
        return;
    const auto status = operationStatus(opposite->GetName(), opposite->GetKind());
    if (!catalogWasRead(status))
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
    const Info info = findConfigured(source, target, drawing.has_value());
    if (drawing)
        require(*drawing, current->loadingResult());
    if (!info) {
        checkOppositeItem(source, target);
        return std::nullopt;
    }
    return Embedded::ConfiguredOperation{info->GetName(), static_cast<Library::TransformationKind>(info->GetKind())};
}

} // namespace Orvelcs
