// Hexadecimal digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/base/error.h"
#include "platform/export.h"

namespace Embedded {

/// The value of a digit in either case; nothing for any other character.
constexpr std::optional<unsigned> hexDigitValue(wchar_t digit)
{
    if (digit >= L'0' && digit <= L'9')
        return static_cast<unsigned>(digit - L'0');
    if (digit >= L'A' && digit <= L'F')
        return static_cast<unsigned>(digit - L'A' + 10);
    if (digit >= L'a' && digit <= L'f')
        return static_cast<unsigned>(digit - L'a' + 10);
    return std::nullopt;
}

/// Two lower-case digits for each byte.
FQCORE_API std::string hexFromBytes(std::string_view bytes);
/// Reads pairs of digits in either case. The Error says which character is wrong; its status is 0.
FQCORE_API Expected<std::string> bytesFromHex(std::string_view hex);

/// The number in upper-case digits, with zeros in front up to `minimumDigits`.
FQCORE_API std::string upperCaseHex(std::uint64_t number, std::size_t minimumDigits = 1);
/// The number in lower-case digits, with zeros in front up to `minimumDigits`.
FQCORE_API std::string lowerCaseHex(std::uint64_t number, std::size_t minimumDigits = 1);

} // namespace Embedded
