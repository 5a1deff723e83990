// Compares several bytes at once. Wherever the processor has them, a block is a vector of 16 bytes (SSE2, which every
// x86-64 has); elsewhere it is a 64-bit word.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if !defined(ORVEL_WITHOUT_VECTORS) && (defined(__SSE2__) || defined(_M_X64))
#define ORVEL_VECTORS
#include <emmintrin.h>
#endif

namespace Orvel {

/// Eight bytes. A Mask has the highest bit of each byte that fulfils a condition.
struct WordBlock {
    using Value = std::uint64_t;
    using Mask = std::uint64_t;
    static constexpr std::size_t kBytes = sizeof(Value);
    static constexpr Mask kAllBytes = 0x8080808080808080;

    static Value load(const unsigned char* bytes)
    {
        Value value = 0;
        std::memcpy(&value, bytes, kBytes);
        return value;
    }

    static Value repeat(unsigned char byte) { return byte * Value{0x0101010101010101}; }

    static Mask equalBytes(Value left, Value right)
    {
        const Value difference = left ^ right;
        return ~(((difference & ~kAllBytes) + ~kAllBytes) | difference) & kAllBytes;
    }

    /// The index of the first byte of a mask that is not empty.
    static std::size_t firstByte(Mask mask)
    {
        const int bits = std::endian::native == std::endian::little ? std::countr_zero(mask) : std::countl_zero(mask);
        return static_cast<std::size_t>(bits) / 8;
    }
};

#ifdef ORVEL_VECTORS
/// Sixteen bytes. A Mask has one bit for each byte that fulfils a condition.
struct VectorBlock {
    using Value = __m128i;
    using Mask = unsigned;
    static constexpr std::size_t kBytes = sizeof(Value);
    static constexpr Mask kAllBytes = 0xFFFF;

    static Value load(const unsigned char* bytes) { return _mm_loadu_si128(reinterpret_cast<const Value*>(bytes)); }
    static Value repeat(unsigned char byte) { return _mm_set1_epi8(static_cast<char>(byte)); }
    static Mask equalBytes(Value left, Value right)
    {
        return static_cast<Mask>(_mm_movemask_epi8(_mm_cmpeq_epi8(left, right)));
    }
    static std::size_t firstByte(Mask mask) { return static_cast<std::size_t>(std::countr_zero(mask)); }
};

using ByteBlock = VectorBlock;
#else
using ByteBlock = WordBlock;
#endif

} // namespace Orvel
