#include "embedded/base/system_path.h"

#include <string>

#include "embedded/base/win32/full_name.h"

namespace Embedded {
std::filesystem::path systemPath(const std::filesystem::path& file)
{
    const std::wstring name = fullNameOf(file);
    if (name.empty() || name.starts_with(LR"(\\?\)") || name.starts_with(LR"(\\.\)"))
        return name;
    if (name.starts_with(LR"(\\)"))
        return LR"(\\?\UNC\)" + name.substr(2);
    return LR"(\\?\)" + name;
}

} // namespace Embedded
