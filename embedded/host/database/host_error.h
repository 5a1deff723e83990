// The Errors of the host: their status is a Qeapp::ErrorStatus.
#pragma once

#include <string>
#include <utility>

#include "embedded/base/error.h"
#include "platform/host/error_status.h"

namespace Embedded {

inline Qeapp::ErrorStatus hostStatus(const Error& error)
{
    return static_cast<Qeapp::ErrorStatus>(error.status);
}

/// eOk for a value.
template <class T>
Qeapp::ErrorStatus hostStatus(const Expected<T>& result)
{
    return result ? Qeapp::eOk : hostStatus(result.error());
}

[[noreturn]] inline void throwError(Qeapp::ErrorStatus status, std::string message, std::string place = {})
{
    throw ErrorException(Error{status, std::move(message), std::move(place)});
}

/// Throws eFileDamaged.
[[noreturn]] inline void throwDamage(std::string message, std::string place = {})
{
    throwError(Qeapp::eFileDamaged, std::move(message), std::move(place));
}

/// Puts the file's name before the place of an error.
inline Error inFile(const std::string& file, Error error)
{
    if (!file.empty())
        error.place = error.place.empty() ? file : file + ": " + error.place;
    return error;
}

/// Returns whether the error is about the file or about something in the file.
inline bool isInFile(const std::string& file, const Error& error)
{
    return error.place == file || error.place.starts_with(file + ": ");
}

} // namespace Embedded

namespace QeHost {

/// Returns the status that `body` returns, or the status of the Error that it throws.
template <class Body>
Qeapp::ErrorStatus catchStatus(Body body)
{
    try {
        return body();
    } catch (const Embedded::ErrorException& exception) {
        return Embedded::hostStatus(exception.error());
    }
}

} // namespace QeHost
