// The forms in which a drawing stores its coordinate system and its transformation configuration. They are read through
// the classes of the host; only packed definitions are read through the module.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orvelcs/drawing/holders.h"
#include "platform/host.h"

namespace Orvelcs {

inline constexpr const wchar_t* kLegacyApplication = L"KTN_PROJECTION";
inline constexpr const wchar_t* kDefinitionKey = L"ORVEL_CSINDWG_REGAPP";
inline constexpr const wchar_t* kConfigurationDictionary = L"ORVEL_CS_TRANSFORMATION_CONFIG";
inline constexpr const wchar_t* kConfigurationKey = L"CONFIG_ITEM";

struct LegacyProjection {
    std::optional<std::wstring> code; // absent where the record holds no text
};

/// A definition that an xrecord holds packed.
struct StoredDefinition {
    std::string type;
    std::optional<std::wstring> code;
};

struct DefinitionXrecord {
    int layout = 0;       // 0 without a header
    bool readable = true; // whether the module reads such a chain, whatever is packed in it
    ResbufList chain;
    std::vector<StoredDefinition> definitions; // those that can be unpacked
};

struct StoredGeoData {
    std::wstring text;
    std::optional<std::wstring> owner; // the block's name
};

struct TransformationConfiguration {
    std::optional<std::wstring> text; // absent where the record does not begin with a text
};

struct StoredForms {
    std::optional<LegacyProjection> legacyProjection;
    std::optional<DefinitionXrecord> definitionXrecord;
    std::optional<StoredGeoData> geoData;
    std::optional<TransformationConfiguration> transformationConfiguration;
};

/// Throws Failure when the host cannot open what is there.
StoredForms readStoredForms(QeDbDatabase* database);

/// The code of the legacy projection record, which the module reads in place of the GeoData object; empty when the
/// drawing has none. Throws Failure when the host cannot open what is there.
std::wstring readLegacyCode(QeDbDatabase* database);
/// Returns whether the legacy projection record can hold the code: readers take "." for none.
bool isLegacyCode(const std::wstring& code);

} // namespace Orvelcs
