// Calls of the packing with an output whose border is watched, also where no sanitizer does.
#pragma once

#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"
#include "support/chain.h"

namespace Fuzz {

using Tests::Bytes;
using PackingCall = std::size_t (*)(const unsigned char* input, std::size_t length, unsigned char* output,
                                    std::size_t capacity);

/// What the call says that it wrote into an output of `capacity` bytes; empty when it wrote nothing.
Bytes watchedCall(PackingCall call, Input input, std::size_t capacity);

} // namespace Fuzz
