// Numbers in text. The whole text must be the number; the process's locale plays no part.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace Embedded {

/// Returns whether the character is one of 0 to 9.
template <class Character>
constexpr bool isDigit(Character character)
{
    return character >= '0' && character <= '9';
}

/// Accepts decimal digits, with a minus sign in front if the type is signed. Returns nothing for any other text, and
/// for a number that the type cannot hold.
template <class Integer>
std::optional<Integer> parseInteger(std::string_view text)
{
    Integer number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

/// Returns nothing if the text is not a number in the format, or if a double cannot hold the number. Accepts the words
/// "inf" and "nan".
inline std::optional<double> parseReal(std::string_view text, std::chars_format format = std::chars_format::general)
{
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, format);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace Embedded
