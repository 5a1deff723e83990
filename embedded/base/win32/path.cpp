#include "embedded/base/path.h"

#include <windows.h>

#include "embedded/base/text.h"

namespace Embedded {

std::filesystem::path pathFromUtf8(const std::string& name)
{
    return wideFromUtf8(name);
}

// Unlike std::filesystem::absolute, this keeps the name of a server.
std::filesystem::path fullPath(const std::filesystem::path& file)
{
    const std::wstring name = file.wstring();
    std::wstring full(MAX_PATH, L'\0');
    DWORD length = GetFullPathNameW(name.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    while (length > full.size()) { // then it is the length that is needed
        full.resize(length);
        length = GetFullPathNameW(name.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    }
    full.resize(length);
    return full.empty() ? name : full;
}

std::filesystem::path systemPath(const std::filesystem::path& file)
{
    const std::wstring name = fullPath(file).wstring();
    if (name.empty() || name.starts_with(LR"(\\?\)") || name.starts_with(LR"(\\.\)"))
        return name;
    if (name.starts_with(LR"(\\)"))
        return LR"(\\?\UNC\)" + name.substr(2);
    return LR"(\\?\)" + name;
}

} // namespace Embedded
