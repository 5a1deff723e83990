// Gives the text of an error for assertions.
#pragma once

#include <string>

#include "embedded/base/error.h"

namespace Tests {

/// The text of the Error, or nothing for a value.
template <class T>
std::string errorText(const Embedded::Expected<T>& result)
{
    return result ? std::string() : result.error().text();
}

} // namespace Tests
