// The binary form of definitions; see docs/formats/definition-stream.md.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Embedded {

inline constexpr std::size_t kLongestBinaryStreamInBytes = 1024;

/// The stream, whatever its length.
std::string binaryStreamFrom(const std::vector<DefinitionData>& definitions);

/// Nothing for bytes that are not a whole, undamaged stream.
std::optional<std::vector<DefinitionData>> definitionsFromBinaryStream(std::string_view bytes);

} // namespace Embedded
