#include "support/win32/heap/imported_functions.h"

#include <windows.h>

#include <winternl.h>

#include <string_view>

#include "support/win32/heap/image_headers.h"
#include "support/win32/heap/loaded_modules.h"

namespace GuardedHeap {
namespace {

constinit std::span<const Replacement> replacementsInUse;

void setAddress(IMAGE_THUNK_DATA& entry, void* function)
{
    DWORD protection = 0;
    if (VirtualProtect(&entry, sizeof entry, PAGE_READWRITE, &protection) == 0)
        return;
    entry.u1.Function = reinterpret_cast<ULONGLONG>(function);
    static_cast<void>(VirtualProtect(&entry, sizeof entry, protection, &protection)); // writable does no harm
}

void replaceImports(std::byte* base, const IMAGE_IMPORT_DESCRIPTOR& library)
{
    if (library.OriginalFirstThunk == 0)
        return;
    const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library.OriginalFirstThunk);
    auto* addresses = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library.FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++addresses) {
        if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal))
            continue;
        const auto& imported = *reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
        const std::string_view name = reinterpret_cast<const char*>(&imported.Name);
        for (const Replacement& replacement : replacementsInUse)
            if (name == replacement.name)
                setAddress(*addresses, replacement.function);
    }
}

void replaceImports(const LoadedModule& module)
{
    if (module.isSystems)
        return;
    const IMAGE_DATA_DIRECTORY& directory =
        headersOf(module.base).OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    if (directory.VirtualAddress == 0)
        return;
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(module.base + directory.VirtualAddress);
    for (; library->Name != 0; ++library)
        if (_stricmp(reinterpret_cast<const char*>(module.base + library->Name), "msvcrt.dll") == 0)
            replaceImports(module.base, *library);
}

// The loader's notices, as its documentation lays them out; the toolchain's headers do not have them.
struct LoaderNotice {
    ULONG flags;
    const UNICODE_STRING* file;
    const UNICODE_STRING* name;
    void* base;
    ULONG size;
};
constexpr ULONG kLoaded = 1;
using NoticeFunction = void(CALLBACK*)(ULONG reason, const LoaderNotice* notice, void* context);
using Registration = NTSTATUS(NTAPI*)(ULONG flags, NoticeFunction function, void* context, void** cookie);

void CALLBACK onLoaderNotice(ULONG reason, const LoaderNotice* notice, void*)
{
    if (reason != kLoaded) {
        noteUnloading(notice->base);
        forgetFrameSizes();
    } else if (const LoadedModule* const module = noteModule(notice->base, notice->file->Buffer); module != nullptr) {
        replaceImports(*module);
    }
}

void listenToLoader()
{
    void* cookie = nullptr;
    const auto listen = reinterpret_cast<Registration>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "LdrRegisterDllNotification")));
    if (listen != nullptr && NT_SUCCESS(listen(0, onLoaderNotice, nullptr, &cookie)))
        return;
    Report report;
    report << "the loader gives no notice of libraries, so later ones would go unwatched";
    report.endProcess(kDamageExitCode);
}

} // namespace

void replaceRuntimeFunctions(std::span<const Replacement> replacements)
{
    replacementsInUse = replacements;
    listenToLoader();
    noteLoadedModules();
    for (const LoadedModule& module : modules())
        replaceImports(module);
}

} // namespace GuardedHeap
