// Comparison without regard to case. None of it depends on the process's locale.
#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "platform/export.h"

namespace Embedded {

/// Only the letters A to Z have a lower-case form here.
template <std::integral Character>
constexpr Character toLowerAscii(Character character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<Character>(character + ('a' - 'A')) : character;
}

/// Only the letters a to z have an upper-case form here.
FQCORE_API std::string toUpperAscii(std::string_view text);

FQCORE_API std::string toLowerAscii(std::string_view text);
FQCORE_API std::wstring toLowerAscii(std::wstring_view text);
FQCORE_API bool equalsIgnoringAsciiCase(std::string_view left, std::string_view right);
FQCORE_API bool equalsIgnoringAsciiCase(std::wstring_view left, std::wstring_view right);

/// Lower case for the letters of Latin, Greek and Cyrillic. Registry files store names in this form, so it never
/// changes.
FQCORE_API std::wstring toLowerCase(std::wstring_view text);

} // namespace Embedded
