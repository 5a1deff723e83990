// The messages of the operating system for calls that failed.
#pragma once

#include <string>
#include <system_error>
#include <type_traits>
#include <utility>

#include "embedded/base/error.h"
#include "platform/export.h"

namespace Embedded {

/// Why the system refused, in English, without a full stop. It is the standard library's sentence where there is one
/// for the same reason, so that every system gives the same words.
FQCORE_API std::string systemMessage(const std::error_code& code);

/// The error of the last call of the system that failed on this thread: of errno, on Windows of GetLastError.
FQCORE_API std::error_code lastSystemError();

/// Returns what `work` returns, or the std::system_error that it throws as an Error: the code's value, the system's
/// message after `failed` and a colon, and the place.
template <class Work>
auto catchSystemError(const std::string& failed, const std::string& place, Work&& work)
    -> Expected<std::invoke_result_t<Work>>
{
    try {
        return callExpected(std::forward<Work>(work));
    } catch (const std::system_error& error) {
        return failure(error.code().value(), failed + ": " + systemMessage(error.code()), place);
    }
}

} // namespace Embedded
