#include "platform/host/memory.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/injected_fault.h"
#include "embedded/host/database/memory.h"

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

namespace QeHost {

void* allocateZeroed(std::size_t lengthInBytes)
{
    return std::calloc(1, std::max<std::size_t>(lengthInBytes, 1));
}

namespace {

/// Zero-filled and counted; released by releaseBuffer.
void* newCountedBuffer(std::size_t lengthInBytes)
{
    void* memory = allocateZeroed(lengthInBytes);
    if (memory != nullptr)
        ResourceCounters::add(ResourceKind::hostBuffer);
    return memory;
}

template <class T>
void releaseBuffer(T*& memory)
{
    if (memory != nullptr)
        ResourceCounters::remove(ResourceKind::hostBuffer);
    std::free(memory);
    memory = nullptr;
}

} // namespace
} // namespace QeHost

Qeapp::ErrorStatus qeutNewString(const wchar_t* source, wchar_t*& copy)
{
    copy = nullptr;
    if (const auto injected = QeHost::injectedFault("qeutNewString"))
        return *injected;
    if (source == nullptr)
        return Qeapp::eInvalidInput;
    const std::size_t characters = std::wcslen(source);
    copy = static_cast<wchar_t*>(QeHost::newCountedBuffer((characters + 1) * sizeof(wchar_t)));
    if (copy == nullptr)
        return Qeapp::eOutOfMemory;
    std::copy_n(source, characters, copy);
    return Qeapp::eOk;
}

Qeapp::ErrorStatus qeutNewBuffer(unsigned char*& buffer, std::size_t lengthInBytes)
{
    buffer = nullptr;
    if (const auto injected = QeHost::injectedFault("qeutNewBuffer"))
        return *injected;
    if (lengthInBytes == 0)
        return Qeapp::eInvalidInput;
    buffer = static_cast<unsigned char*>(QeHost::newCountedBuffer(lengthInBytes));
    return buffer != nullptr ? Qeapp::eOk : Qeapp::eOutOfMemory;
}

void qeutDelBuffer(wchar_t*& text)
{
    QeHost::releaseBuffer(text);
}

void qeutDelBuffer(unsigned char*& buffer)
{
    QeHost::releaseBuffer(buffer);
}

void* qeapp_malloc(std::size_t lengthInBytes)
{
    if (QeHost::isFaultInjected("qeapp_malloc"))
        return nullptr;
    void* memory = std::malloc(std::max<std::size_t>(lengthInBytes, 1));
    if (memory != nullptr)
        ResourceCounters::add(ResourceKind::resbufMemory);
    return memory;
}

void qeapp_free(void* memory)
{
    if (memory != nullptr)
        ResourceCounters::remove(ResourceKind::resbufMemory);
    std::free(memory);
}

void* qeHeapAlloc(std::size_t lengthInBytes)
{
    return QeHost::isFaultInjected("qeHeapAlloc") ? nullptr : QeHost::allocateZeroed(lengthInBytes);
}

void qeHeapFree(void* memory)
{
    std::free(memory);
}
