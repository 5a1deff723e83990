#include "support/win32/heap/system_memory.h"

#include <windows.h>

#include "support/win32/heap/report.h"

namespace GuardedHeap {

void* newPages(std::size_t bytes)
{
    void* const pages = VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (pages == nullptr) {
        Report report;
        report << "the system has no memory left for the tables";
        report.endProcess(kDamageExitCode);
    }
    return pages;
}

void releasePages(void* pages)
{
    if (pages != nullptr)
        static_cast<void>(VirtualFree(pages, 0, MEM_RELEASE)); // it fails for what was never allocated only
}

} // namespace GuardedHeap
