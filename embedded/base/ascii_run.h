// Runs of ASCII characters, of which most texts of this system are made. They need no decoding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>
#include <type_traits>

namespace Embedded {

/// Removes the ASCII characters at the front of the text and returns them. Looks at a word of them together, which is a
/// third of the time of looking at each.
template <class Character>
std::basic_string_view<Character> takeAscii(std::basic_string_view<Character>& text)
{
    using Unsigned = std::make_unsigned_t<Character>;
    constexpr std::uint64_t mostOfUnit = std::numeric_limits<Unsigned>::max();
    constexpr std::uint64_t beyondAscii = ~std::uint64_t{0} / mostOfUnit * (mostOfUnit - 0x7F); // in each unit
    constexpr std::size_t unitsInWord = sizeof beyondAscii / sizeof(Character);
    std::size_t length = 0;
    for (std::uint64_t word = 0; length + unitsInWord <= text.size(); length += unitsInWord) {
        std::memcpy(&word, text.data() + length, sizeof word);
        if ((word & beyondAscii) != 0)
            break;
    }
    while (length < text.size() && static_cast<Unsigned>(text[length]) < 0x80)
        ++length;
    const auto ascii = text.substr(0, length);
    text.remove_prefix(length);
    return ascii;
}

} // namespace Embedded
