// The search for a pair of coordinate systems in a configuration text.
#pragma once

#include "storage/library_holder.h"

namespace Orvel {

/// The name and the type of the first item from `sourceCs` to `targetCs`, ignoring case, or else of the first item from
/// `targetCs` to `sourceCs` whose definition can be used in reverse. Empty when there is none, for null arguments, and
/// for equal codes.
[[nodiscard]] LibraryObject<Library::TransformationInfo>
FindConfiguredTransformation(const wchar_t* sourceCs, const wchar_t* targetCs, const wchar_t* text);

} // namespace Orvel
