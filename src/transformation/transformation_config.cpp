#include "coordsys/orvel_transformation_config.h"

#include "coordsys/reactor_notices.h"
#include "platform/windows.h"
#include "storage/host_holders.h"
#include "transformation/configured_transformation.h"
#include "transformation/drawing_config.h"
#include "transformation/registry_settings.h"
#include "transformation/user_settings_file.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

using Read = bool (*)(wchar_t*&);

/// Nothing when the configuration cannot be read, and when it has no such pair.
TransformationInfo* findIn(Read read, const wchar_t* sourceCs, const wchar_t* targetCs)
{
    wchar_t* text = nullptr;
    if (!read(text))
        return nullptr;
    const ::Orvel::HostString owned(text);
    return ::Orvel::FindConfiguredTransformation(sourceCs, targetCs, text);
}

bool store(const wchar_t* text, CsTransformationConfigTargetType target)
{
    switch (target) {
    case CsTransformationConfigTargetType::Drawing:
        return ::Orvel::WriteDrawingTransformationConfig(text);
    case CsTransformationConfigTargetType::User:
        return ::Orvel::WriteUserTransformationSettings(text);
    }
    return false;
}

bool empty(CsTransformationConfigTargetType target)
{
    switch (target) {
    case CsTransformationConfigTargetType::Drawing:
        return ::Orvel::WriteDrawingTransformationConfig(L"");
    case CsTransformationConfigTargetType::User:
        return ::Orvel::WriteRegistryTransformationSettings(L"");
    }
    return false;
}

} // namespace

bool GetCsTransformationConfig(wchar_t*& text, CsTransformationConfigTargetType target)
{
    switch (target) {
    case CsTransformationConfigTargetType::Drawing:
        return ::Orvel::ReadDrawingTransformationConfig(text);
    case CsTransformationConfigTargetType::User:
        return ::Orvel::ReadUserTransformationSettings(text);
    }
    return false;
}

bool SetCsTransformationConfig(const wchar_t* text, CsTransformationConfigTargetType target)
{
    const bool stored = store(text, target);
    NotifyCsTransformationChanged();
    return stored;
}

bool ClearCsTransformationConfig(CsTransformationConfigTargetType target)
{
    const bool cleared = empty(target);
    NotifyCsTransformationChanged();
    return cleared;
}

TransformationInfo* GetCsConfiguredTransformationInfo(const wchar_t* sourceCs, const wchar_t* targetCs)
{
    if (sourceCs == nullptr || targetCs == nullptr || _wcsicmp(sourceCs, targetCs) == 0)
        return nullptr;
    TransformationInfo* const found = findIn(::Orvel::ReadDrawingTransformationConfig, sourceCs, targetCs);
    return found != nullptr ? found : findIn(::Orvel::ReadUserTransformationSettings, sourceCs, targetCs);
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
