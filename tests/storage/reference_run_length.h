// The packing once more, plainly and for itself, to compare the module's with.
#pragma once

#include <optional>

#include "support/chain.h"

namespace Tests {

std::size_t referenceRunLength(const Bytes& input, std::size_t position);
Bytes referencePacked(const Bytes& input);
/// Nothing for empty and for malformed input.
std::optional<Bytes> referenceUnpacked(const Bytes& input);

} // namespace Tests
