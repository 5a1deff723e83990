// The program and the libraries in its process: which of them are the project's, where they keep data, what to call an
// address in a report.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "support/win32/heap/call_trace.h"
#include "support/win32/heap/report.h"

namespace GuardedHeap {

struct LoadedModule {
    std::byte* base = nullptr;
    std::size_t size = 0;
    bool isSystems = false; // it lies in a folder of Windows' own
    bool isLoaded = false;  // names are kept after the unloading, for reports
    std::array<char, 48> name{};
};

/// Notes everything that is loaded at this moment.
void noteLoadedModules();
/// Null when there is no room for more of them; a report then has the bare address.
const LoadedModule* noteModule(void* base, const wchar_t* file);
void noteUnloading(const void* base);
std::span<const LoadedModule> modules();

/// Such as `libzsr.dll+0x12ab`.
void name(Report& report, const void* address);
void name(Report& report, const CallTrace& trace);

} // namespace GuardedHeap
