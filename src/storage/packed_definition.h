// One definition as packed bytes: its class identifier and its stream without the first byte, run-length packed.
// See docs/formats/packed-definition.md.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/spatial_reference.h"

namespace Orvel {

/// No packed definition is longer: 16 bytes of identifier, the 1,023 of the longest stream that are stored, and at
/// worst a header for each of them.
inline constexpr std::size_t kLongestPackedDefinition = std::size_t{16 + 1023} * 2;

/// False for a null definition, one of another type than the three, and one whose stream needs more than 1,024 bytes;
/// `bytes` is then empty.
[[nodiscard]] bool EncodeDefinitionBytes(const Zentara::Infrastructure::SpatialReference::DefinitionBase* definition,
                                         std::vector<unsigned char>& bytes);

/// The definition in the bytes, the caller's to Destroy, or null when they do not hold exactly one.
[[nodiscard]] Zentara::Infrastructure::SpatialReference::DefinitionBase*
DecodeDefinitionBytes(const unsigned char* bytes, std::size_t length);

} // namespace Orvel
