// Packed definitions as this format's own page has them, put together and taken apart without the module.
#pragma once

#include <cstddef>
#include <optional>

#include "fuzz/targets.h"
#include "support/chain.h"

namespace Fuzz {

using Tests::Bytes;

inline constexpr std::size_t kDefinitionKinds = 3;
inline constexpr std::size_t kClassIdLength = 16;

/// The class identifier of a system, a datum and an ellipsoid.
Bytes classIdOf(std::size_t kind);
/// The stream's bytes without its first one, when what is packed begins with such an identifier; otherwise nothing.
std::optional<Bytes> packedStream(const Bytes& packed);
/// Packed bytes of a stream that is complete but for its first byte, a zero, and its checksum.
Bytes packedForm(std::size_t kind, Input stream);

} // namespace Fuzz
