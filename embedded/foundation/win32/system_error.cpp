#include "embedded/foundation/win32/system_error.h"

#include <system_error>

namespace Embedded {
namespace {

/// What the standard library has no sentence for, or one that leads astray.
const char* ownMessage(DWORD error)
{
    switch (error) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return "in use by another program";
    case ERROR_INVALID_NAME:
        return "no name that a file can have";
    case ERROR_MOD_NOT_FOUND:
        return "it, or a library that it needs, cannot be found";
    case kErrorIsFolder:
        return "Is a directory";
    default:
        return nullptr;
    }
}

} // namespace

std::string systemMessage(DWORD error)
{
    if (const char* message = ownMessage(error))
        return message;
    const std::error_code code(static_cast<int>(error), std::system_category());
    const std::error_condition condition = code.default_error_condition();
    constexpr int kLastOfTheCRuntime = 42; // it knows no sentence for the later numbers of errno
    if (condition.category() == std::generic_category() && condition.value() <= kLastOfTheCRuntime)
        return condition.message();
    return code.message() + " (" + std::to_string(error) + ")";
}

} // namespace Embedded
