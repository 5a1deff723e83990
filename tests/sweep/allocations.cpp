#include "sweep/allocations.h"

#include <cstdlib>
#include <new>

namespace {

using Tests::Allocator;

bool isCounting = false;
std::array<std::size_t, 3> allocations{};
Allocator failingAllocator = Allocator::other;
std::size_t failingAllocation = 0;

bool fails(const void* caller)
{
    if (!isCounting)
        return false;
    isCounting = false; // finding out whose code allocates may itself allocate
    const Allocator allocator = Tests::allocatorAt(caller);
    isCounting = true;
    const std::size_t number = ++allocations[static_cast<std::size_t>(allocator)];
    return allocator == failingAllocator && number == failingAllocation;
}

void* allocate(std::size_t size, const void* caller) noexcept
{
    return fails(caller) ? nullptr : std::malloc(size == 0 ? 1 : size);
}

} // namespace

void* operator new(std::size_t size)
{
    void* const memory = allocate(size, __builtin_return_address(0));
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocate(size, __builtin_return_address(0));
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    std::free(memory);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

namespace Tests {

ScopedAllocations::ScopedAllocations(Allocator whose, std::size_t failing)
{
    failingAllocator = whose;
    failingAllocation = failing;
    allocations = {};
    isCounting = true;
}

ScopedAllocations::~ScopedAllocations()
{
    isCounting = false;
}

std::size_t ScopedAllocations::count(Allocator whose)
{
    return allocations[static_cast<std::size_t>(whose)];
}

} // namespace Tests
