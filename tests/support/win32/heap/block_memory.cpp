#include "support/win32/heap/block_memory.h"

#include <windows.h>

#include "support/win32/heap/report.h"
#include "support/win32/heap/system_memory.h"

namespace GuardedHeap {

void BlockMemory::open()
{
    // The guarded heap's lock is enough.
    heap_ = HeapCreate(HEAP_NO_SERIALIZE, 0, 0);
    if (heap_ != nullptr)
        return;
    Report report;
    report << "the system gives no heap";
    report.endProcess(kDamageExitCode);
}

std::byte* BlockMemory::take(std::size_t bytes)
{
    if (bytes > kLargestPiece)
        return static_cast<std::byte*>(HeapAlloc(heap_, 0, bytes));
    const std::size_t units = (bytes + kUnit - 1) / kUnit;
    Piece* const piece = free_[units];
    if (piece == nullptr)
        return newPiece(units * kUnit);
    free_[units] = piece->next;
    return reinterpret_cast<std::byte*>(piece);
}

void BlockMemory::giveBack(std::byte* memory, std::size_t bytes)
{
    if (bytes > kLargestPiece) {
        static_cast<void>(HeapFree(heap_, 0, memory)); // it came from there
        return;
    }
    auto* const piece = reinterpret_cast<Piece*>(memory);
    Piece*& list = free_[(bytes + kUnit - 1) / kUnit];
    piece->next = list;
    list = piece;
}

std::byte* BlockMemory::newPiece(std::size_t bytes)
{
    constexpr std::size_t sheet = std::size_t{1} << 20;
    if (uncutBytes_ < bytes) { // what is left of the former is too little to keep account of
        uncut_ = newPagesOf<std::byte>(sheet);
        uncutBytes_ = sheet;
    }
    std::byte* const piece = uncut_;
    uncut_ += bytes;
    uncutBytes_ -= bytes;
    return piece;
}

} // namespace GuardedHeap
