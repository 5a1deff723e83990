// The class identifier at the start of a packed definition, which names the kind of the definition.
#pragma once

#include <array>
#include <optional>

#include "platform/spatial_reference.h"

namespace Orvel {

/// The 16 bytes of an identifier in memory order: a 32-bit and two 16-bit fields, little-endian, then eight bytes.
using ClassIdBytes = std::array<unsigned char, 16>;

/// The identifier of the definition's run-time type. No value for null, for another type, and when the text of the
/// identifier cannot be converted.
std::optional<ClassIdBytes>
DefinitionKindClsid(const Zentara::Infrastructure::SpatialReference::DefinitionBase* definition);

/// Returns whether the bytes are the identifier of one of the three kinds.
bool isDefinitionKindClsid(const ClassIdBytes& bytes);

} // namespace Orvel
