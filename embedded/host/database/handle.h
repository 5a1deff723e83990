// The number of an object in its drawing.
#pragma once

#include <cstdint>
#include <string>

namespace Embedded {

using Handle = std::uint64_t; // 0 for none

/// A handle as people and messages write it: upper-case hexadecimal digits.
std::string formatHandle(Handle handle);
/// The object as the place of an Error: "object 1F".
std::string objectPlace(Handle handle);

} // namespace Embedded
