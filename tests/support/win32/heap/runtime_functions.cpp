// The functions that the project's binaries get in place of the C runtime's. They are at work from the first of the
// program's initialisers on; ORVEL_GUARDED_HEAP=off leaves the runtime's own in place, for measuring.
//
// What was allocated before that stays the runtime's to the end (libraries that are loaded with the program initialise
// earlier), and so do blocks of `_aligned_malloc`.

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <string_view>

#include "support/win32/heap/damage_report.h"
#include "support/win32/heap/guarded_heap.h"
#include "support/win32/heap/imported_functions.h"
#include "support/win32/heap/leak_scan.h"
#include "support/win32/heap/report.h"

namespace GuardedHeap {
namespace {

constinit Heap heap{};
constinit std::atomic_flag isLocked;

// It is held for less time than a lock of the system takes.
class Locked {
public:
    Locked()
    {
        while (isLocked.test_and_set(std::memory_order_acquire))
            static_cast<void>(SwitchToThread()); // with nobody to switch to it tries again
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked() { isLocked.clear(std::memory_order_release); }
};

/// The C runtime's own, for what it allocated itself.
struct Runtime {
    void (*free)(void*);
    void* (*realloc)(void*, std::size_t);
    std::size_t (*msize)(void*);
    HANDLE heap;
};
constinit Runtime runtime{};

template <class Function>
Function runtimeFunction(const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), name)));
}

void findRuntime()
{
    runtime.free = runtimeFunction<void (*)(void*)>("free");
    runtime.realloc = runtimeFunction<void* (*)(void*, std::size_t)>("realloc");
    runtime.msize = runtimeFunction<std::size_t (*)(void*)>("_msize");
    const auto heapOf = runtimeFunction<std::intptr_t (*)()>("_get_heap_handle");
    runtime.heap = heapOf != nullptr ? reinterpret_cast<HANDLE>(heapOf()) : GetProcessHeap();
}

/// Ends the process unless the address is a block of the C runtime's.
void requireRuntimes(std::string_view operation, void* address, const CallSite& caller)
{
    if (HeapValidate(runtime.heap, 0, address) == 0)
        reportForeignAddress(operation, address, traceFrom(caller));
}

std::byte* allocate(std::size_t size, const CallSite& caller)
{
    std::byte* start = nullptr;
    {
        const Locked locked;
        start = heap.allocate(size, caller);
    }
    if (start == nullptr)
        errno = ENOMEM;
    return start;
}

void release(void* start, const CallSite& caller)
{
    const Locked locked;
    if (start == nullptr || heap.release(start, caller))
        return;
    requireRuntimes("free", start, caller);
    runtime.free(start);
}

template <class Character>
Character* duplicate(const Character* text, std::size_t characters, const CallSite& caller)
{
    auto* const copy = reinterpret_cast<Character*>(allocate((characters + 1) * sizeof(Character), caller));
    if (copy != nullptr)
        std::memcpy(copy, text, (characters + 1) * sizeof(Character));
    return copy;
}

void* guardedMalloc(std::size_t size)
{
    return allocate(size, thisCall());
}

void guardedFree(void* start)
{
    release(start, thisCall());
}

void* guardedCalloc(std::size_t number, std::size_t size)
{
    std::size_t bytes = 0;
    if (__builtin_mul_overflow(number, size, &bytes)) {
        errno = ENOMEM;
        return nullptr;
    }
    std::byte* const start = allocate(bytes, thisCall());
    return start != nullptr ? std::memset(start, 0, bytes) : nullptr;
}

/// The size of a live block of the guarded heap; of others the runtime is to answer.
bool sizeOf(void* start, std::string_view operation, const CallSite& caller, std::size_t& size)
{
    const Locked locked;
    const Block* const block = heap.live(start, caller);
    if (block == nullptr)
        requireRuntimes(operation, start, caller);
    else
        size = block->size;
    return block != nullptr;
}

// Always to another place, so that a pointer kept from before leads to freed memory.
void* reallocate(void* start, std::size_t size, const CallSite& caller)
{
    std::size_t formerSize = 0;
    if (start == nullptr)
        return allocate(size, caller);
    if (!sizeOf(start, "realloc", caller, formerSize))
        return runtime.realloc(start, size);
    std::byte* const moved = size != 0 ? allocate(size, caller) : nullptr;
    if (moved == nullptr && size != 0)
        return nullptr;
    if (moved != nullptr)
        std::memcpy(moved, start, std::min(size, formerSize));
    release(start, caller);
    return moved;
}

void* guardedRealloc(void* start, std::size_t size)
{
    return reallocate(start, size, thisCall());
}

std::size_t guardedSize(void* start)
{
    std::size_t size = 0;
    return sizeOf(start, "_msize", thisCall(), size) ? size : runtime.msize(start);
}

char* guardedStrdup(const char* text)
{
    return text != nullptr ? duplicate(text, std::strlen(text), thisCall()) : nullptr;
}

wchar_t* guardedWcsdup(const wchar_t* text)
{
    return text != nullptr ? duplicate(text, std::wcslen(text), thisCall()) : nullptr;
}

template <class Function>
Replacement replacementFor(const char* name, Function* function)
{
    return {name, reinterpret_cast<void*>(function)};
}

// The first exit handler that is registered is the last to run: the program's static objects are gone by then, those of
// its libraries are not.
void checkAtExit()
{
    static_cast<void>(std::fflush(nullptr)); // the runtime does so after this, but may not get there
    const Locked locked;
    heap.checkAll();
    const Leaks leaks = reportLeaks(heap, thisCall().callersStack);
    if (leaks.blocks == 0)
        return;
    Report report;
    report << "leaks: " << leaks.blocks << (leaks.blocks == 1 ? " block, " : " blocks, ") << leaks.bytes << " bytes";
    report.endProcess(kLeakExitCode);
}

bool isWanted()
{
    std::array<char, 8> value{};
    const DWORD length = GetEnvironmentVariableA("ORVEL_GUARDED_HEAP", value.data(), static_cast<DWORD>(value.size()));
    return std::string_view(value.data(), length < value.size() ? length : 0) != "off";
}

// Before the program's own initialisers, which have lower priorities.
[[gnu::constructor(101)]] void begin()
{
    if (!isWanted())
        return;
    findRuntime();
    heap.open();
    if (std::atexit(checkAtExit) != 0)
        Report().endProcess(kDamageExitCode);
    static const std::array replacements{
        replacementFor("malloc", guardedMalloc),  replacementFor("free", guardedFree),
        replacementFor("calloc", guardedCalloc),  replacementFor("realloc", guardedRealloc),
        replacementFor("_msize", guardedSize),    replacementFor("_strdup", guardedStrdup),
        replacementFor("_wcsdup", guardedWcsdup),
    };
    replaceRuntimeFunctions(replacements);
}

} // namespace
} // namespace GuardedHeap
