#include "embedded/base/system_error.h"

#include <windows.h>

#include <string_view>

namespace Embedded {
namespace {

/// Messages for errors for which the standard library's message is missing or misleading.
const char* ownMessage(int error)
{
    switch (error) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return "in use by another program";
    case ERROR_INVALID_NAME:
        return "not a valid file name";
    case ERROR_MOD_NOT_FOUND:
        return "it, or a library that it needs, cannot be found";
    default:
        return nullptr;
    }
}

} // namespace

std::string systemMessage(const std::error_code& error)
{
    // Each DLL has its own category objects, which never compare equal.
    if (error.category().name() != std::string_view("system"))
        return error.message();
    const std::error_code code(error.value(), std::system_category());
    if (const char* message = ownMessage(code.value()))
        return message;
    const std::error_condition condition = code.default_error_condition();
    constexpr int kLastErrnoWithMessage = 42; // the C runtime has no message for later ones
    if (condition.category() == std::generic_category() && condition.value() <= kLastErrnoWithMessage)
        return condition.message();
    return code.message() + " (" + std::to_string(code.value()) + ")";
}

std::error_code lastSystemError()
{
    return {static_cast<int>(GetLastError()), std::system_category()};
}

} // namespace Embedded
