// The one way in which the module asks a definition for its code.
#pragma once

#include "platform/spatial_reference.h"

namespace Orvel {

/// The definition's code, which is the definition's own; null for a null definition and when the query fails.
[[nodiscard]] const wchar_t*
definitionCode(const Zentara::Infrastructure::SpatialReference::DefinitionBase* definition);

/// Whether there is nothing in the text: null or empty.
[[nodiscard]] bool isBlank(const wchar_t* text);

} // namespace Orvel
