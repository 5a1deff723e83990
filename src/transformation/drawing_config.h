// The transformation configuration of the working drawing.
#pragma once

#include "storage/host_holders.h"

namespace Orvel {

inline constexpr const wchar_t* kTransformationConfigDictionary = L"ORVEL_CS_TRANSFORMATION_CONFIG";
inline constexpr const wchar_t* kTransformationConfigKey = L"CONFIG_ITEM";

/// The configuration as the host hands it out: a chain that begins with a text. Null without a working database,
/// without a configuration, or when the dictionary's first entry holds no text.
[[nodiscard]] ResbufChain drawingTransformationConfig();

/// Copies the configuration. On true `text` is a new host string, which the caller releases with qeutDelBuffer. On
/// false it is the shared empty text: there is no configuration, or memory is short.
[[nodiscard]] bool ReadDrawingTransformationConfig(wchar_t*& text);

/// Replaces the configuration by `text`. Returns false, and the former one stays, without a working database or when
/// the host cannot store it.
[[nodiscard]] bool WriteDrawingTransformationConfig(const wchar_t* text);

} // namespace Orvel
