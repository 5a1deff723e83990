// Definitions as text: PROJJSON in a small JSON frame, as UTF-16 little-endian with a NUL at the end.
// docs/formats/definition-text.md describes the format.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "embedded/base/error.h"
#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Embedded {

inline constexpr int kDefinitionTextVersion = 1;

/// The text of the definition. With `includeDependents` its datum and its ellipsoid follow, if it has them.
std::string encodeDefinitionText(const DefinitionData& definition, bool includeDependents);

/// The definitions of a whole, undamaged text. The Error has statusEmptyText, statusUnreadable, or statusUnsupported
/// for a text of a newer version.
Expected<std::vector<DefinitionData>> decodeDefinitionText(std::string_view utf16le);

} // namespace Embedded
