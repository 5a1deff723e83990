#include "coordsys/orvel_transformation_config.h"

#include <algorithm>
#include <array>

#include "coordsys/coordinate_system_reactors.h"
#include "platform/windows.h"
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

/// What serves a target. Clearing writes the empty text.
struct Target {
    CsTransformationConfigTargetType type;
    Reader read;
    Writer write;
    Writer clear;
};

/// The user's settings file is read and written; clearing empties the registry and leaves the file as it is.
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
    const auto* const found = std::ranges::find(kTargets, type, &Target::type);
    return found != kTargets.end() ? found : nullptr;
}

/// Null when the configuration cannot be read, and when it has no such pair.
TransformationInfo* findIn(Reader read, const wchar_t* sourceCs, const wchar_t* targetCs)
{
    wchar_t* text = nullptr;
    if (!read(text))
        return nullptr;
    const HostString owned(text);
    return FindConfiguredTransformation(sourceCs, targetCs, text).release();
}

} // namespace

bool GetCsTransformationConfig(wchar_t*& text, CsTransformationConfigTargetType target)
{
    const Target* const found = findTarget(target);
    return found != nullptr && found->read(text);
}

bool SetCsTransformationConfig(const wchar_t* text, CsTransformationConfigTargetType target)
{
    const Target* const found = findTarget(target);
    const bool stored = found != nullptr && found->write(text);
    NotifyCsTransformationChanged();
    return stored;
}

bool ClearCsTransformationConfig(CsTransformationConfigTargetType target)
{
    const Target* const found = findTarget(target);
    const bool cleared = found != nullptr && found->clear(L"");
    NotifyCsTransformationChanged();
    return cleared;
}

TransformationInfo* GetCsConfiguredTransformationInfo(const wchar_t* sourceCs, const wchar_t* targetCs)
{
    if (sourceCs == nullptr || targetCs == nullptr || _wcsicmp(sourceCs, targetCs) == 0)
        return nullptr;
    TransformationInfo* const found = findIn(ReadDrawingTransformationConfig, sourceCs, targetCs);
    return found != nullptr ? found : findIn(ReadUserTransformationSettings, sourceCs, targetCs);
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
