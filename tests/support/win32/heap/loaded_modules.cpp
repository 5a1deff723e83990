#include "support/win32/heap/loaded_modules.h"

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <string_view>

#include "support/win32/heap/image_headers.h"

namespace GuardedHeap {
namespace {

struct ModuleTable {
    std::array<LoadedModule, 256> entries;
    std::size_t used;
};
constinit ModuleTable moduleTable{};

bool liesInWindowsFolder(const wchar_t* file)
{
    std::array<wchar_t, MAX_PATH> folder;
    const UINT length = GetSystemWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return length != 0 && length < folder.size() && _wcsnicmp(file, folder.data(), length) == 0;
}

// The names of the project's files are plain; what is not becomes a question mark.
void copyName(const wchar_t* file, std::array<char, 48>& name)
{
    const std::wstring_view path(file);
    const std::wstring_view last = path.substr(path.find_last_of(L"\\/") + 1).substr(0, name.size() - 1);
    std::ranges::transform(last, name.begin(), [](wchar_t c) { return c < 0x7F ? static_cast<char>(c) : '?'; });
}

const LoadedModule* moduleAt(const void* address)
{
    const auto* const byte = static_cast<const std::byte*>(address);
    const auto all = modules();
    // The latest first: an unloaded library's addresses may have been given out again.
    const auto found = std::find_if(all.rbegin(), all.rend(), [byte](const LoadedModule& module) {
        return byte >= module.base && byte < module.base + module.size;
    });
    return found != all.rend() ? &*found : nullptr;
}

} // namespace

const LoadedModule* noteModule(void* base, const wchar_t* file)
{
    const auto same = std::ranges::find(moduleTable.entries, base, &LoadedModule::base);
    if (same == moduleTable.entries.end() && moduleTable.used == moduleTable.entries.size())
        return nullptr;
    LoadedModule& module = same != moduleTable.entries.end() ? *same : moduleTable.entries[moduleTable.used++];
    module = {};
    module.base = static_cast<std::byte*>(base);
    module.size = headersOf(module.base).OptionalHeader.SizeOfImage;
    module.isSystems = liesInWindowsFolder(file);
    module.isLoaded = true;
    copyName(file, module.name);
    return &module;
}

void noteLoadedModules()
{
    std::array<HMODULE, 256> handles;
    DWORD size = 0;
    if (K32EnumProcessModules(GetCurrentProcess(), handles.data(), sizeof handles, &size) == 0)
        return;
    const std::size_t number = std::min<std::size_t>(size / sizeof(HMODULE), handles.size());
    for (const HMODULE handle : std::span(handles).first(number)) {
        std::array<wchar_t, 1024> file{};
        if (GetModuleFileNameW(handle, file.data(), static_cast<DWORD>(file.size() - 1)) != 0)
            static_cast<void>(noteModule(handle, file.data())); // those beyond the table's room stay without a name
    }
}

void noteUnloading(const void* base)
{
    const auto found = std::ranges::find(moduleTable.entries, base, &LoadedModule::base);
    if (found != moduleTable.entries.end())
        found->isLoaded = false;
}

std::span<const LoadedModule> modules()
{
    return std::span(moduleTable.entries).first(moduleTable.used);
}

void name(Report& report, const void* address)
{
    if (const LoadedModule* const module = moduleAt(address); module != nullptr)
        report << module->name.data() << "+"
               << Hexadecimal{static_cast<std::size_t>(static_cast<const std::byte*>(address) - module->base)};
    else
        report << Hexadecimal{reinterpret_cast<std::size_t>(address)};
}

void name(Report& report, const CallTrace& trace)
{
    for (const void* const address : trace) {
        if (address == nullptr)
            return;
        report << " ";
        name(report, address);
    }
}

} // namespace GuardedHeap
