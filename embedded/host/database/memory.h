// The memory that host objects live on.
#pragma once

#include <cstddef>
#include <new>

#include "platform/host/memory.h"

namespace QeHost {

/// Zero-filled memory, or null. Fault injection does not affect it. Released with qeHeapFree.
void* allocateZeroed(std::size_t lengthInBytes);

/// Makes an object for the host itself. Fault injection does not affect it. Throws std::bad_alloc.
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
