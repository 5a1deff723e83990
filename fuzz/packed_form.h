// Builds and splits packed definitions without the module, from docs/formats/packed-definition.md.
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
Bytes getClassId(std::size_t kind);
/// The bytes of the stream without its first byte; nothing if the packed bytes do not begin with such an identifier.
std::optional<Bytes> unpackStream(const Bytes& packed);
/// Packs a stream. Adds its first byte, a zero, and its checksum.
Bytes packStream(std::size_t kind, Input stream);

} // namespace Fuzz
