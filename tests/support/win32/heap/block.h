// A block of the guarded heap: the memory that was asked for between two runs of guard bytes. What is known of it lies
// apart, where an overrun does not reach it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "support/win32/heap/call_trace.h"

namespace GuardedHeap {

inline constexpr std::size_t kGuardSize = 32;

struct alignas(64) Block {
    std::byte* start;
    std::size_t size;
    CallTrace allocatedAt;
    CallTrace freedAt; // the first is null while the block is live
    std::uint32_t phase;
    bool isReached; // by the search for leaks

    bool isLive() const { return freedAt[0] == nullptr; }
    std::byte* wholeStart() const { return start - kGuardSize; }
    static std::size_t wholeSize(std::size_t size) { return size + 2 * kGuardSize; }
};

enum class Fill : unsigned char { fresh = 0xCB, freed = 0xDB };

void fill(const Block& block, Fill pattern);
void writeGuards(const Block& block);

/// The first byte that is not as it must be, counted from the block's start: negative before it.
[[nodiscard]] std::optional<std::ptrdiff_t> damageToGuards(const Block& block);
/// Of a block that was freed: a write since then.
[[nodiscard]] std::optional<std::ptrdiff_t> damageToFreed(const Block& block);

} // namespace GuardedHeap
