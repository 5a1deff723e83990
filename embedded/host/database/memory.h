// The memory that host objects live on.
#pragma once

#include <cstddef>
#include <new>

#include "platform/host/memory.h"

namespace QeHost {

/// Zero-filled memory, or null; not a fallible call of its own. Released with qeHeapFree.
void* allocateZeroed(std::size_t lengthInBytes);

/// A new object of the host's own making, which no planned failure hits; without memory std::bad_alloc.
template <class T>
T* makeHostObject()
{
    void* memory = allocateZeroed(sizeof(T));
    if (memory == nullptr)
        throw std::bad_alloc();
    try {
        return ::new (memory) T;
    } catch (...) {
        qeHeapFree(memory);
        throw;
    }
}

} // namespace QeHost
