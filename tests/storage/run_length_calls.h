// Calls of the packing functions that check the bytes behind the output.
#pragma once

#include "support/chain.h"

namespace Tests {

using PackingCall = std::size_t (*)(const unsigned char*, std::size_t, unsigned char*, std::size_t);

inline constexpr unsigned char kUntouchedByte = 0xA5;
inline constexpr std::size_t kBorder = 160; // more than any packet

/// The result of a call, and its output when the result is not 0.
struct Written {
    std::size_t length = 0;
    Bytes bytes;
};

/// Call with an output of exactly `capacity` bytes. Fail the test when a byte after it changes.
Written packInto(std::size_t capacity, const Bytes& input);
Written unpackInto(std::size_t capacity, const Bytes& input);

std::size_t packedSize(const Bytes& input);
std::size_t unpackedSize(const Bytes& input);

/// Pack and unpack the whole input. Fail the test when the size function and the call disagree.
Bytes packed(const Bytes& input);
Bytes unpacked(const Bytes& input);

} // namespace Tests
