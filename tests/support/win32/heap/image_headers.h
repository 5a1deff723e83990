// What a loaded library's headers say of it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>

namespace GuardedHeap {

inline const IMAGE_NT_HEADERS& headersOf(const std::byte* base)
{
    const auto& start = *reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    return *reinterpret_cast<const IMAGE_NT_HEADERS*>(base + start.e_lfanew);
}

inline std::span<const IMAGE_SECTION_HEADER> sectionsOf(const std::byte* base)
{
    const IMAGE_NT_HEADERS& headers = headersOf(base);
    const auto* const optional = reinterpret_cast<const std::byte*>(&headers.OptionalHeader);
    const auto* const first =
        reinterpret_cast<const IMAGE_SECTION_HEADER*>(optional + headers.FileHeader.SizeOfOptionalHeader);
    return {first, headers.FileHeader.NumberOfSections};
}

} // namespace GuardedHeap
