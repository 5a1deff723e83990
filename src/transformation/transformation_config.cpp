#include "coordsys/orvel_transformation_config.h"

#include <array>

#include "coordsys/coordinate_system_reactors.h"
#include "platform/win32.h"
#include "storage/host_holders.h"
#include "transformation/configured_transformation.h"
#include "transformation/drawing_config.h"
#include "transformation/registry_settings.h"
#include "transformation/user_settings_file.h"

using namespace Orvel;

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

using Reader = bool (*)(wchar_t*&);
using Writer = bool (*)(const wchar_t*);

/// The functions of a target. Clearing writes the empty text.
struct Target {
    CsTransformationConfigTargetType type;
    Reader read;
    Writer write;
    Writer clear;
};

/// For the user, reading and writing use the settings file. Clearing deletes the values in the registry and does not
/// change the file.
constexpr std::array kTargets{
    Target{.type = CsTransformationConfigTargetType::Drawing,
           .read = ReadDrawingTransformationConfig,
           .write = WriteDrawingTransformationConfig,
           .clear = WriteDrawingTransformationConfig},
    Target{.type = CsTransformationConfigTargetType::User,
           .read = ReadUserTransformationSettings,
           .write = WriteUserTransformationSettings,
           .clear = WriteRegistryTransformationSettings},
};

/// Null for an unknown target.
const Target* findTarget(CsTransformationConfigTargetType type)
{
    for (const Target& target : kTargets) {
        if (target.type == type)
            return &target;
    }
    return nullptr;
}

/// Searches the text that the host hands out, without another copy. Null without an item for the two codes.
TransformationInfo* findInDrawing(const wchar_t* sourceCs, const wchar_t* targetCs)
{
    const ResbufChain chain = drawingTransformationConfig();
    if (!chain)
        return nullptr;
    return FindConfiguredTransformation(sourceCs, targetCs, chain->resval.rstring).release();
}

/// Null when the settings file cannot be read, and when it has no item for the two codes.
TransformationInfo* findInSettingsFile(const wchar_t* sourceCs, const wchar_t* targetCs)
{
    wchar_t* text = nullptr;
    if (!ReadUserTransformationSettings(text))
        return nullptr;
    const HostString owned(text);
    return FindConfiguredTransformation(sourceCs, targetCs, text).release();
}

} // namespace

bool GetCsTransformationConfig(wchar_t*& text, CsTransformationConfigTargetType target)
{
    const Target* const functions = findTarget(target);
    return functions != nullptr && functions->read(text);
}

bool SetCsTransformationConfig(const wchar_t* text, CsTransformationConfigTargetType target)
{
    const Target* const functions = findTarget(target);
    const bool isStored = functions != nullptr && functions->write(text);
    NotifyCsTransformationChanged();
    return isStored;
}

bool ClearCsTransformationConfig(CsTransformationConfigTargetType target)
{
    const Target* const functions = findTarget(target);
    const bool isCleared = functions != nullptr && functions->clear(L"");
    NotifyCsTransformationChanged();
    return isCleared;
}

TransformationInfo* GetCsConfiguredTransformationInfo(const wchar_t* sourceCs, const wchar_t* targetCs)
{
    if (sourceCs == nullptr || targetCs == nullptr || _wcsicmp(sourceCs, targetCs) == 0)
        return nullptr;
    TransformationInfo* const info = findInDrawing(sourceCs, targetCs);
    return info != nullptr ? info : findInSettingsFile(sourceCs, targetCs);
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
