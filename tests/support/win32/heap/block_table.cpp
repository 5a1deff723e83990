#include "support/win32/heap/block_table.h"

#include <algorithm>
#include <bit>

#include "support/win32/heap/system_memory.h"

namespace GuardedHeap {

std::size_t BlockTable::homeOf(const void* start) const
{
    return (reinterpret_cast<std::uintptr_t>(start) * 0x9E3779B97F4A7C15u) >> shift_;
}

/// The slot of the block, or the empty one that ends the search for it.
std::size_t BlockTable::slotOf(const void* start) const
{
    std::size_t slot = homeOf(start);
    while (slots_[slot].block != nullptr && slots_[slot].start != start)
        slot = next(slot);
    return slot;
}

Block* BlockTable::find(const void* start) const
{
    return capacity_ != 0 ? slots_[slotOf(start)].block : nullptr;
}

Block& BlockTable::insert(std::byte* start)
{
    if (used_ >= capacity_ / 2)
        grow();
    Block& block = newRecord();
    block.start = start;
    slots_[slotOf(start)] = {start, &block};
    ++used_;
    return block;
}

void BlockTable::erase(const Block& block)
{
    std::size_t hole = slotOf(block.start);
    Block* const record = slots_[hole].block;
    // What follows moves up, unless it would then lie before its home, where no search begins.
    for (std::size_t slot = next(hole); slots_[slot].block != nullptr; slot = next(slot)) {
        const std::size_t distanceFromHome = (slot - homeOf(slots_[slot].start)) & (capacity_ - 1);
        if (distanceFromHome >= ((slot - hole) & (capacity_ - 1))) {
            slots_[hole] = slots_[slot];
            hole = slot;
        }
    }
    slots_[hole] = {};
    --used_;
    record->start = reinterpret_cast<std::byte*>(freeRecords_);
    freeRecords_ = record;
}

void BlockTable::grow()
{
    Slot* const former = slots_;
    const std::size_t formerCapacity = capacity_;
    capacity_ = std::max<std::size_t>(capacity_ * 2, std::size_t{1} << 14);
    shift_ = 64u - static_cast<unsigned>(std::countr_zero(capacity_));
    slots_ = newPagesOf<Slot>(capacity_);
    for (std::size_t slot = 0; slot < formerCapacity; ++slot)
        if (former[slot].block != nullptr)
            slots_[slotOf(former[slot].start)] = former[slot];
    releasePages(former);
}

Block& BlockTable::newRecord()
{
    constexpr std::size_t number = 4096;
    if (freeRecords_ == nullptr) {
        Block* const records = newPagesOf<Block>(number);
        for (std::size_t index = 0; index < number; ++index)
            records[index].start = reinterpret_cast<std::byte*>(index + 1 < number ? &records[index + 1] : nullptr);
        freeRecords_ = records;
    }
    Block& record = *freeRecords_;
    freeRecords_ = reinterpret_cast<Block*>(record.start);
    return record;
}

} // namespace GuardedHeap
