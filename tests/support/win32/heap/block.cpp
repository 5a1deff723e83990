#include "support/win32/heap/block.h"

#include <array>
#include <cstring>

namespace GuardedHeap {
namespace {

// No two neighbours are alike, so that a copied or a filled run does not look like guard bytes.
constexpr auto kGuard = [] {
    std::array<std::byte, kGuardSize> bytes;
    unsigned value = 0xA5;
    for (std::byte& byte : bytes) {
        byte = static_cast<std::byte>(value);
        value = (value * 5 + 0x3B) & 0xFF;
    }
    return bytes;
}();

bool isGuard(const std::byte* bytes)
{
    return __builtin_memcmp(bytes, kGuard.data(), kGuardSize) == 0;
}

std::size_t firstDifference(const std::byte* bytes)
{
    std::size_t index = 0;
    while (bytes[index] == kGuard[index])
        ++index;
    return index;
}

std::uint64_t wordAt(const std::byte* bytes)
{
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

} // namespace

void fill(const Block& block, Fill pattern)
{
    std::memset(block.start, static_cast<int>(pattern), block.size);
}

void writeGuards(const Block& block)
{
    std::memcpy(block.wholeStart(), kGuard.data(), kGuardSize);
    std::memcpy(block.start + block.size, kGuard.data(), kGuardSize);
}

std::optional<std::ptrdiff_t> damageToGuards(const Block& block)
{
    if (!isGuard(block.wholeStart()))
        return static_cast<std::ptrdiff_t>(firstDifference(block.wholeStart())) -
               static_cast<std::ptrdiff_t>(kGuardSize);
    const std::byte* const behind = block.start + block.size;
    if (!isGuard(behind))
        return static_cast<std::ptrdiff_t>(block.size + firstDifference(behind));
    return std::nullopt;
}

std::optional<std::ptrdiff_t> damageToFreed(const Block& block)
{
    constexpr auto expected = static_cast<std::byte>(Fill::freed);
    constexpr std::uint64_t expectedWord = 0x0101010101010101u * static_cast<std::uint64_t>(Fill::freed);
    std::size_t index = 0;
    while (index + sizeof expectedWord <= block.size && wordAt(block.start + index) == expectedWord)
        index += sizeof expectedWord;
    for (; index < block.size; ++index)
        if (block.start[index] != expected)
            return static_cast<std::ptrdiff_t>(index);
    return std::nullopt;
}

} // namespace GuardedHeap
