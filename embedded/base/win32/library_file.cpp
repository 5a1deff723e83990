#include "embedded/base/library_file.h"

#include <windows.h>

#include <string>

namespace Embedded {

std::filesystem::path libraryFileOf(const void* address)
{
    HMODULE library = nullptr;
    if (address == nullptr || // which stands for the program there
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           static_cast<const wchar_t*>(address), &library) == 0)
        return {};
    std::wstring name(32768, L'\0'); // the longest there is
    name.resize(GetModuleFileNameW(library, name.data(), static_cast<DWORD>(name.size())));
    return name;
}

} // namespace Embedded
