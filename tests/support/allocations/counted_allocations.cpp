#include "support/allocations/counted_allocations.h"

#include <cstdlib>
#include <new>

namespace {

bool nextAllocationFails = false;
long blocks = 0;

void* allocate(std::size_t size)
{
    if (nextAllocationFails) {
        nextAllocationFails = false;
        throw std::bad_alloc();
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    ++blocks;
    return memory;
}

void release(void* memory) noexcept
{
    if (memory != nullptr)
        --blocks;
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    try {
        return allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept
{
    release(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    release(memory);
}

namespace Tests {

long allocatedBlocks()
{
    return blocks;
}

ScopedShortage::ScopedShortage()
{
    nextAllocationFails = true;
}

ScopedShortage::~ScopedShortage()
{
    nextAllocationFails = false;
}

} // namespace Tests
