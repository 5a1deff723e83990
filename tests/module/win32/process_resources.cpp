#include "module/process_resources.h"

#include <windows.h>

#include <cstdint>

namespace Tests {
namespace {

/// The committed memory, mapped libraries and files included. Not every Windows keeps this sum itself.
std::size_t committedBytes()
{
    std::size_t bytes = 0;
    MEMORY_BASIC_INFORMATION region{};
    for (const char* place = nullptr; VirtualQuery(place, &region, sizeof region) == sizeof region;
         place = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State == MEM_COMMIT)
            bytes += region.RegionSize;
    }
    return bytes;
}

/// Not every Windows keeps this count either. Windows uses free numbers again, so only a process with very many handles
/// has larger numbers.
std::size_t openHandles()
{
    constexpr std::uintptr_t kLargest = 0x10000;
    std::size_t handles = 0;
    for (std::uintptr_t number = 4; number < kLargest; number += 4) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags) != 0)
            ++handles;
    }
    return handles;
}

} // namespace

ProcessResources processResources()
{
    return {committedBytes(), openHandles()};
}

} // namespace Tests
