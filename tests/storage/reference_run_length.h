// A second, plain implementation of the packing, to which tests compare the module.
#pragma once

#include <optional>

#include "support/chain.h"

namespace Tests {

std::size_t referenceRunLength(const Bytes& input, std::size_t position);
Bytes referencePacked(const Bytes& input);
/// No value for empty and for malformed input.
std::optional<Bytes> referenceUnpacked(const Bytes& input);

} // namespace Tests
