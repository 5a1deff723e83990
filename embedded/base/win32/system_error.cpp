#include "embedded/base/system_error.h"

#include <windows.h>

#include <string_view>

namespace Embedded {
namespace {

/// What the standard library has no sentence for, or one that leads astray.
const char* ownMessage(int error)
{
    switch (error) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return "in use by another program";
    case ERROR_INVALID_NAME:
        return "no name that a file can have";
    case ERROR_MOD_NOT_FOUND:
        return "it, or a library that it needs, cannot be found";
    default:
        return nullptr;
    }
}

} // namespace

std::string systemMessage(const std::error_code& given)
{
    // Each library has categories of its own here, which compare as different.
    if (given.category().name() != std::string_view("system"))
        return given.message();
    const std::error_code code(given.value(), std::system_category());
    if (const char* message = ownMessage(code.value()))
        return message;
    const std::error_condition condition = code.default_error_condition();
    constexpr int kLastOfTheCRuntime = 42; // it knows no sentence for the later numbers of errno
    if (condition.category() == std::generic_category() && condition.value() <= kLastOfTheCRuntime)
        return condition.message();
    return code.message() + " (" + std::to_string(code.value()) + ")";
}

std::error_code lastSystemError()
{
    return {static_cast<int>(GetLastError()), std::system_category()};
}

} // namespace Embedded
