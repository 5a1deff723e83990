#include "allocation_count.h"

#include <malloc.h>

#include <atomic>
#include <cerrno>

// The C library's allocator under names that a program does not replace when it replaces malloc.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

namespace Bench {
namespace {

constinit std::atomic<std::size_t> allocated{0};
constinit std::atomic<std::size_t> peak{0};

void* counted(void* memory)
{
    const std::size_t size = malloc_usable_size(memory);
    const std::size_t now = allocated.fetch_add(size, std::memory_order_relaxed) + size;
    std::size_t most = peak.load(std::memory_order_relaxed);
    while (now > most && !peak.compare_exchange_weak(most, now, std::memory_order_relaxed)) {
    }
    return memory;
}

void discount(std::size_t size)
{
    allocated.fetch_sub(size, std::memory_order_relaxed);
}

} // namespace

std::size_t allocatedBytes()
{
    return allocated;
}

std::size_t peakBytes()
{
    return peak;
}

void resetPeak()
{
    peak = allocated.load();
}

void returnLongTextsToSystem()
{
    constexpr int kLongInBytes = 1 << 17;
    static_cast<void>(mallopt(M_MMAP_THRESHOLD, kLongInBytes)); // without effect the program is only slower
}

} // namespace Bench

// These have default visibility, so that the shared libraries of the process call them, too.
extern "C" {
#pragma GCC visibility push(default)

void* malloc(std::size_t size)
{
    return Bench::counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size)
{
    return Bench::counted(__libc_calloc(count, size));
}

// Counts the new block as another one, so that both exist for a while.
void* realloc(void* memory, std::size_t size)
{
    const std::size_t former = malloc_usable_size(memory);
    void* const moved = Bench::counted(__libc_realloc(memory, size));
    if (moved != nullptr || size == 0)
        Bench::discount(former);
    return moved;
}

void* memalign(std::size_t alignment, std::size_t size)
{
    return Bench::counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    *memory = memalign(alignment, size);
    return *memory != nullptr ? 0 : ENOMEM;
}

void free(void* memory)
{
    Bench::discount(malloc_usable_size(memory));
    __libc_free(memory);
}

#pragma GCC visibility pop
}
