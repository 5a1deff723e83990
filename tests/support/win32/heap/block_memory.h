// Where the blocks of the guarded heap lie. Small ones come from lists of equal pieces: the system's heap takes more
// time for one than everything else that is done with it.
#pragma once

#include <array>
#include <cstddef>

namespace GuardedHeap {

class BlockMemory {
public:
    /// Ends the process when the system gives it no heap.
    void open();
    /// At a multiple of 16. Null when there is no memory.
    [[nodiscard]] std::byte* take(std::size_t bytes);
    /// `bytes`: as it was taken.
    void giveBack(std::byte* memory, std::size_t bytes);
    /// What large blocks come from.
    void* systemHeap() const { return heap_; }

private:
    static constexpr std::size_t kUnit = 16;
    static constexpr std::size_t kLargestPiece = 2048;
    struct Piece {
        Piece* next;
    };

    std::byte* newPiece(std::size_t bytes);

    void* heap_ = nullptr;
    std::array<Piece*, kLargestPiece / kUnit + 1> free_{}; // by size in units
    std::byte* uncut_ = nullptr;
    std::size_t uncutBytes_ = 0;
};

} // namespace GuardedHeap
