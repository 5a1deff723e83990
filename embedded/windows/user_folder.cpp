#include "embedded/windows/user_folder.h"

#include <cstdlib>

namespace Embedded {
namespace {

std::optional<std::filesystem::path> absolutePathIn(const char* variable)
{
    const char* const value = std::getenv(variable);
    if (value == nullptr || !std::filesystem::path(value).is_absolute())
        return std::nullopt;
    return value;
}

} // namespace

std::optional<std::filesystem::path> userFolder(const char* variable, const std::filesystem::path& belowHome)
{
    if (auto folder = absolutePathIn(variable))
        return folder;
    if (const auto home = absolutePathIn("HOME"))
        return *home / belowHome;
    return std::nullopt;
}

} // namespace Embedded
