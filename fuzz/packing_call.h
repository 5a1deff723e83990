// Calls the packing with guard bytes behind the output, which work without a sanitizer as well.
#pragma once

#include <cstddef>
#include <cstdint>

#include "fuzz/targets.h"
#include "support/chain.h"

namespace Fuzz {

using Tests::Bytes;
using PackingCall = std::size_t (*)(const unsigned char* input, std::size_t length, unsigned char* output,
                                    std::size_t capacity);

/// Returns the bytes that the call wrote into an output of `capacity` bytes. Ends the process if it wrote further.
Bytes checkedPackingCall(PackingCall call, Input input, std::size_t capacity);

} // namespace Fuzz
