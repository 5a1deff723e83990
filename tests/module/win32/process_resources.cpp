#include "module/process_resources.h"

#include <windows.h>

#include <cstdint>

namespace Tests {
namespace {

/// What is committed in the address space, of libraries and files that are mapped as well: the sum that the system
/// offers itself is not kept by every Windows.
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

/// The same goes for their count. Free numbers are given out again, so that only a process with very many has larger
/// ones.
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
