// The packing calls with buffers whose borders are checked.
#pragma once

#include "support/chain.h"

namespace Tests {

/// The result of a call, and its output when the result is not 0.
struct Written {
    std::size_t length = 0;
    Bytes bytes;
};

/// Call with an output of exactly `capacity` bytes and fail the test when a byte beyond it is touched.
Written packInto(std::size_t capacity, const Bytes& input);
Written unpackInto(std::size_t capacity, const Bytes& input);

std::size_t packedSize(const Bytes& input);
std::size_t unpackedSize(const Bytes& input);

/// Pack and unpack the whole input. Fail the test when the size function and the call disagree.
Bytes packed(const Bytes& input);
Bytes unpacked(const Bytes& input);

} // namespace Tests
