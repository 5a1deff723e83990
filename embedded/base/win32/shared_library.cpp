#include "embedded/base/shared_library.h"

#include <windows.h>

#include <string>

#include "embedded/base/path.h"
#include "embedded/base/system_error.h"

namespace Embedded {

Expected<SharedLibrary> SharedLibrary::open(const std::filesystem::path& file)
{
    // The libraries that it needs are searched for in its own folder first, not in that of the program.
    SharedLibrary library(LoadLibraryExW(fullPath(file).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    if (library.handle_ == nullptr)
        return failure(0, displayName(file) + ": " + systemMessage(lastSystemError()));
    return library;
}

SharedLibrary::~SharedLibrary()
{
    if (handle_ != nullptr)
        static_cast<void>(FreeLibrary(static_cast<HMODULE>(handle_))); // a library that cannot be unloaded stays
}

void* SharedLibrary::symbol(const char* name) const
{
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

std::filesystem::path libraryFileAt(const void* address)
{
    HMODULE library = nullptr;
    if (address == nullptr || // GetModuleHandleExW takes null for the program
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           static_cast<const wchar_t*>(address), &library) == 0)
        return {};
    std::wstring name(32768, L'\0'); // no name is longer
    name.resize(GetModuleFileNameW(library, name.data(), static_cast<DWORD>(name.size())));
    return name;
}

} // namespace Embedded
