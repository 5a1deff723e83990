// The one result type of the embedded platform and of the command line: a value, or an Error that says why there is
// none.
#pragma once

#include <exception>
#include <string>
#include <type_traits>
#include <utility>

#include <tl/expected.hpp>

namespace Embedded {

/// Why something could not be done.
struct Error {
    int status = 0;      // of the interface that failed: Qeapp::ErrorStatus, the library's Status, SQLite's code, errno
    std::string message; // one line without a full stop: what was expected, what was found, what to do
    std::string place;   // the file, object, row or option that it is about; empty where there is none

    /// Needs no memory.
    static Error outOfMemory(int status) { return {status, "out of memory", {}}; }

    /// The message after its place, as people read it.
    std::string text() const { return place.empty() ? message : place + ": " + message; }
};

template <class T>
using Expected = tl::expected<T, Error>;

inline tl::unexpected<Error> failure(Error error)
{
    return tl::unexpected<Error>(std::move(error));
}

inline tl::unexpected<Error> failure(int status, std::string message, std::string place = {})
{
    return failure(Error{status, std::move(message), std::move(place)});
}

/// Calls `work` and returns its result as an Expected with a value.
template <class Work>
auto callExpected(Work&& work) -> Expected<std::invoke_result_t<Work>>
{
    if constexpr (std::is_void_v<std::invoke_result_t<Work>>) {
        std::forward<Work>(work)();
        return {};
    } else {
        return std::forward<Work>(work)();
    }
}

/// Carries an Error through code that cannot return one, such as a visitor. It ends in `catchError`, in the same room.
class ErrorException : public std::exception {
public:
    explicit ErrorException(Error error) : error_(std::move(error)) {}
    const char* what() const noexcept override { return error_.message.c_str(); }
    const Error& error() const { return error_; }

private:
    Error error_;
};

/// Returns what `work` returns, or the Error that it throws.
template <class Work>
auto catchError(Work&& work) -> Expected<std::invoke_result_t<Work>>
{
    try {
        return callExpected(std::forward<Work>(work));
    } catch (const ErrorException& exception) {
        return failure(exception.error());
    }
}

} // namespace Embedded
