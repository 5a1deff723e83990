#include "embedded/base/win32/full_name.h"

#include <windows.h>

namespace Embedded {

std::wstring fullNameOf(const std::filesystem::path& file)
{
    const std::wstring name = file.wstring();
    std::wstring full(MAX_PATH, L'\0');
    DWORD length = GetFullPathNameW(name.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    while (length > full.size()) { // it is the room that is needed then
        full.resize(length);
        length = GetFullPathNameW(name.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    }
    full.resize(length);
    return full.empty() ? name : full;
}

} // namespace Embedded
