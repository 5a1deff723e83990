// Every block that the guarded heap knows, found by its address: whether an address is one of its own is decided here,
// never by a look at the memory before it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "support/win32/heap/block.h"

namespace GuardedHeap {

class BlockTable {
public:
    /// The caller fills in everything but the start.
    Block& insert(std::byte* start);
    /// Null when no block starts there.
    Block* find(const void* start) const;
    void erase(const Block& block);
    /// Begins to load what `erase` will read.
    void prefetch(const Block& block) const { __builtin_prefetch(&slots_[homeOf(block.start)]); }

    std::size_t size() const { return used_; }
    template <class Visitor>
    void visit(Visitor visitor) const
    {
        for (std::size_t slot = 0; slot < capacity_; ++slot)
            if (slots_[slot].block != nullptr)
                visitor(*slots_[slot].block);
    }

private:
    // The key beside the pointer, so that a search touches one record at most.
    struct Slot {
        const void* start;
        Block* block;
    };

    std::size_t homeOf(const void* start) const;
    std::size_t slotOf(const void* start) const;
    std::size_t next(std::size_t slot) const { return (slot + 1) & (capacity_ - 1); }
    void grow();
    Block& newRecord();

    Slot* slots_ = nullptr;
    std::size_t capacity_ = 0;
    std::size_t used_ = 0;
    unsigned shift_ = 0;
    Block* freeRecords_ = nullptr; // linked through their starts
};

} // namespace GuardedHeap
