// The run-length packing of stored definitions: packets of a header byte and either one byte to repeat or the bytes
// themselves. See docs/formats/packed-definition.md.
#pragma once

#include <cstddef>
#include <vector>

namespace Orvel {

/// The number of equal bytes from `position` on, at most 128. `position` is before `end`.
[[nodiscard]] std::size_t RunLength(const unsigned char* position, const unsigned char* end);

/// Packs into `output` and returns the packed length in bytes. 0 for empty input and when `capacity` is too small.
[[nodiscard]] std::size_t PackRuns(const unsigned char* input, std::size_t length, unsigned char* output,
                                   std::size_t capacity);
/// The length that PackRuns returns when `capacity` is large enough.
[[nodiscard]] std::size_t PackedSize(const unsigned char* input, std::size_t length);

/// The packed bytes, in one pass over the input. Empty for empty input.
[[nodiscard]] std::vector<unsigned char> Pack(const unsigned char* input, std::size_t length);

/// Unpacks into `output` and returns the unpacked length in bytes. 0 for empty input, for input that ends inside a
/// packet and when `capacity` is too small.
[[nodiscard]] std::size_t UnpackRuns(const unsigned char* input, std::size_t length, unsigned char* output,
                                     std::size_t capacity);
/// The length that UnpackRuns returns when `capacity` is large enough. 0 for input that it cannot unpack.
[[nodiscard]] std::size_t UnpackedSize(const unsigned char* input, std::size_t length);

} // namespace Orvel
