#include "support/win32/heap/leak_scan.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "support/win32/heap/damage_report.h"
#include "support/win32/heap/image_headers.h"
#include "support/win32/heap/loaded_modules.h"
#include "support/win32/heap/system_memory.h"
#include "support/win32/heap/threads.h"

namespace GuardedHeap {
namespace {

class Search final : public MemoryVisitor {
public:
    explicit Search(const BlockTable& table)
        : blocks_(newPagesOf<Block*>(table.size() + 1)), toFollow_(newPagesOf<Block*>(table.size() + 1))
    {
        table.visit([this](Block& block) {
            if (block.isLive())
                blocks_[number_++] = &block;
            block.isReached = false;
        });
        std::ranges::sort(live(), {}, &Block::start);
    }
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;
    ~Search()
    {
        releasePages(blocks_);
        releasePages(toFollow_);
    }

    std::span<Block*> live() const { return {blocks_, number_}; }

    void visit(const void* from, std::size_t bytes) override
    {
        if (number_ == 0)
            return;
        // Pointers lie at multiples of their size.
        const auto first = (reinterpret_cast<std::uintptr_t>(from) + sizeof(void*) - 1) & ~(sizeof(void*) - 1);
        const auto end = reinterpret_cast<std::uintptr_t>(from) + bytes;
        for (std::uintptr_t place = first; place + sizeof(void*) <= end; place += sizeof(void*))
            reachBlockAt(*reinterpret_cast<std::byte* const*>(place));
    }

    /// Through the blocks that were reached, until there is nothing new.
    void follow()
    {
        while (numberToFollow_ != 0) {
            const Block& block = *toFollow_[--numberToFollow_];
            visit(block.start, block.size);
        }
    }

private:
    void reachBlockAt(const std::byte* address)
    {
        if (address < blocks_[0]->start || address > blocks_[number_ - 1]->start + blocks_[number_ - 1]->size)
            return;
        const auto after = std::ranges::upper_bound(live(), address, {}, &Block::start);
        if (after == live().begin())
            return;
        Block& block = **(after - 1);
        // A pointer into the block will do: a base class need not lie at the start. So will one to a block of no bytes.
        if (block.isReached || address > block.start + (block.size != 0 ? block.size - 1 : 0))
            return;
        block.isReached = true;
        toFollow_[numberToFollow_++] = &block;
    }

    Block** blocks_;
    Block** toFollow_;
    std::size_t number_ = 0;
    std::size_t numberToFollow_ = 0;
};

void reachFromModules(Search& search)
{
    constexpr DWORD wanted = IMAGE_SCN_MEM_WRITE | IMAGE_SCN_MEM_READ;
    for (const LoadedModule& module : modules())
        if (module.isLoaded)
            for (const IMAGE_SECTION_HEADER& section : sectionsOf(module.base))
                if ((section.Characteristics & wanted) == wanted)
                    search.visit(module.base + section.VirtualAddress, section.Misc.VirtualSize);
}

// The runtime's and the system's own memory, and blocks from before this heap was at work.
void reachFromOtherHeaps(Search& search, const Heap& guarded)
{
    std::array<HANDLE, 128> heaps;
    const DWORD number = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    for (const HANDLE heap : std::span(heaps).first(std::min<std::size_t>(number, heaps.size()))) {
        if (heap == guarded.systemHeap())
            continue;
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heap, &entry) != 0)
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0)
                search.visit(entry.lpData, entry.cbData);
    }
}

// Every binary has its own copy of the C++ library in it, and each of those allocates a reserve for exceptions when it
// is loaded, which it does not free when it is unloaded: 64 exceptions of 1 KiB, and 64 dependent ones. The size tells
// it well enough: nothing that leads to one in a loaded library is missed.
bool isUnloadedLibrarysReserve(const Block& block)
{
    constexpr std::size_t size = 64 * (1024 + 144);
    return block.size == size;
}

void describeLeak(const Block& block)
{
    Report report;
    report << "leak of " << block.size << " bytes";
    report.endLine();
    describeHistory(report, block);
}

} // namespace

Leaks reportLeaks(const Heap& heap, const void* stackStart)
{
    constexpr std::size_t mostDescribed = 30;
    Search search(heap.blocks());
    reachFromModules(search);
    visitThisThread(search, stackStart);
    visitOtherThreads(search);
    reachFromOtherHeaps(search, heap);
    search.follow();
    Leaks leaks;
    for (const Block* const block : search.live()) {
        if (block->isReached || isUnloadedLibrarysReserve(*block))
            continue;
        if (leaks.blocks < mostDescribed)
            describeLeak(*block);
        ++leaks.blocks;
        leaks.bytes += block->size;
    }
    return leaks;
}

} // namespace GuardedHeap
