#include "support/win32/heap/guarded_heap.h"

#include "support/win32/heap/damage_report.h"
#include "support/win32/heap/phases.h"
#include "support/win32/heap/system_memory.h"

namespace GuardedHeap {
namespace {

// More would find later writes and cost more of the processor's caches.
constexpr std::size_t kMostBytesKeptBack = std::size_t{2} << 20;
constexpr std::size_t kMostKeptBack = std::size_t{1} << 10;

void checkGuards(const Block& block, const CallTrace& finder)
{
    if (const auto place = damageToGuards(block); place)
        reportDamage(*place < 0 ? Damage::underrun : Damage::overrun, block, *place, finder);
}

void checkFreed(const Block& block, const CallTrace& finder)
{
    checkGuards(block, finder);
    if (const auto place = damageToFreed(block); place)
        reportDamage(Damage::writeAfterFree, block, *place, finder);
}

} // namespace

void Heap::open()
{
    memory_.open();
    keptBack_ = newPagesOf<Block*>(kMostKeptBack);
}

std::byte* Heap::allocate(std::size_t size, const CallSite& caller)
{
    const std::size_t wholeSize = Block::wholeSize(size);
    auto* const memory = wholeSize > size ? memory_.take(wholeSize) : nullptr;
    if (memory == nullptr)
        return nullptr;
    Block& block = blocks_.insert(memory + kGuardSize);
    block.size = size;
    block.allocatedAt = traceFrom(caller);
    block.freedAt = {};
    block.phase = currentPhase();
    block.isReached = false;
    writeGuards(block);
    fill(block, Fill::fresh);
    return block.start;
}

const Block* Heap::live(void* start, const CallSite& caller) const
{
    const Block* const block = blocks_.find(start);
    if (block != nullptr && !block->isLive())
        reportDamage(Damage::secondFree, *block, 0, traceFrom(caller));
    return block;
}

bool Heap::release(void* start, const CallSite& caller)
{
    Block* const block = blocks_.find(start);
    if (block == nullptr)
        return false;
    const CallTrace trace = traceFrom(caller);
    if (!block->isLive())
        reportDamage(Damage::secondFree, *block, 0, trace);
    checkGuards(*block, trace);
    fill(*block, Fill::freed);
    block->freedAt = trace;
    keepBack(*block);
    return true;
}

void Heap::keepBack(Block& block)
{
    while (numberKeptBack_ != 0 && (numberKeptBack_ == kMostKeptBack || bytesKeptBack_ > kMostBytesKeptBack))
        letGoOfOldest();
    keptBack_[(oldest_ + numberKeptBack_) % kMostKeptBack] = &block;
    ++numberKeptBack_;
    bytesKeptBack_ += Block::wholeSize(block.size);
}

// What was kept back has left the processor's caches: without this, waiting for it would be the most of all the cost.
void Heap::prefetchNextOldest() const
{
    const Block* const later = keptBack_[(oldest_ + 8) % kMostKeptBack];
    const Block* const soon = keptBack_[(oldest_ + 4) % kMostKeptBack];
    if (later == nullptr || soon == nullptr)
        return;
    __builtin_prefetch(later);
    __builtin_prefetch(&later->freedAt);
    __builtin_prefetch(soon->wholeStart());
    __builtin_prefetch(soon->start + soon->size);
    blocks_.prefetch(*soon);
}

void Heap::letGoOfOldest()
{
    prefetchNextOldest();
    const Block& block = *keptBack_[oldest_];
    oldest_ = (oldest_ + 1) % kMostKeptBack;
    --numberKeptBack_;
    bytesKeptBack_ -= Block::wholeSize(block.size);
    checkFreed(block, {});
    memory_.giveBack(block.wholeStart(), Block::wholeSize(block.size));
    blocks_.erase(block);
}

void Heap::checkAll() const
{
    blocks_.visit([](const Block& block) { block.isLive() ? checkGuards(block, {}) : checkFreed(block, {}); });
}

} // namespace GuardedHeap
