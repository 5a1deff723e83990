#include "memory/posix/allocated_bytes.h"

#include <malloc.h>

// Only a sanitizer defines this function. It has its own heap.
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace Tests {

std::size_t allocatedBytes()
{
    if (&__sanitizer_get_current_allocated_bytes != nullptr)
        return __sanitizer_get_current_allocated_bytes();
    const struct mallinfo2 info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace Tests
