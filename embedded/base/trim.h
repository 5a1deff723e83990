// Text without the blanks at its ends.
#pragma once

#include <string_view>
#include <type_traits>

namespace Embedded {

/// The part of the text from the first to the last character that is not one of `blanks`.
template <class Character>
std::basic_string_view<Character> trim(std::basic_string_view<Character> text,
                                       std::type_identity_t<std::basic_string_view<Character>> blanks)
{
    const auto first = text.find_first_not_of(blanks);
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace Embedded
