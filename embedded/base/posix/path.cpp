#include "embedded/base/path.h"

namespace Embedded {

std::filesystem::path pathFromUtf8(const std::string& name)
{
    return name;
}

std::filesystem::path fullPath(const std::filesystem::path& file)
{
    return std::filesystem::absolute(file);
}

std::filesystem::path systemPath(const std::filesystem::path& file)
{
    return file;
}

} // namespace Embedded
