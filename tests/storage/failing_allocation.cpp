#include "storage/failing_allocation.h"

#include <cstdlib>
#include <new>

namespace {

bool listening = false;
std::size_t watchedSize = 0;
std::size_t failingOccurrence = 0;
std::size_t occurrences = 0;

void* allocate(std::size_t size) noexcept
{
    if (listening && size == watchedSize && ++occurrences == failingOccurrence)
        return nullptr;
    return std::malloc(size == 0 ? 1 : size);
}

} // namespace

void* operator new(std::size_t size)
{
    void* const memory = allocate(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocate(size);
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

ScopedFailingAllocation::ScopedFailingAllocation(std::size_t size, std::size_t occurrence)
{
    watchedSize = size;
    failingOccurrence = occurrence;
    occurrences = 0;
    listening = true;
}

ScopedFailingAllocation::~ScopedFailingAllocation()
{
    listening = false;
}

// The state is global, as the allocation functions are.
std::size_t ScopedFailingAllocation::count() const // NOLINT(readability-convert-member-functions-to-static)
{
    return occurrences;
}

} // namespace Tests
