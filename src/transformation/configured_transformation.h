// The search for a pair of coordinate systems in a configuration text.
#pragma once

#include "platform/spatial_reference.h"

namespace Orvel {

/// The first item from `sourceCs` to `targetCs`, ignoring case, else the first from `targetCs` to `sourceCs` whose
/// definition can be used in reverse: its name and its type, in a new object for the caller to Destroy. Null when there
/// is none, for null arguments, and for codes that are equal.
[[nodiscard]] Zentara::Infrastructure::SpatialReference::TransformationInfo*
FindConfiguredTransformation(const wchar_t* sourceCs, const wchar_t* targetCs, const wchar_t* text);

} // namespace Orvel
