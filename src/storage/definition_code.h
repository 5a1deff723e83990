// The code of a definition.
#pragma once

#include "platform/spatial_reference.h"

namespace Orvel {

/// The code, which the definition owns. Null for a null definition and when the query fails.
[[nodiscard]] const wchar_t*
definitionCode(const Zentara::Infrastructure::SpatialReference::DefinitionBase* definition);

/// Returns whether the text is null or empty.
[[nodiscard]] bool isBlank(const wchar_t* text);

} // namespace Orvel
