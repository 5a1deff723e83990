#include "embedded/base/case_folding.h"

#include <algorithm>
#include <array>

namespace Embedded {
namespace {

/// The capital letters beyond ASCII from `first` to `last`, `step` apart, and the distance of each to its lower-case
/// letter.
struct CapitalLetters {
    char32_t first;
    char32_t last;
    char32_t step;
    char32_t distance;
};
constexpr std::array kCapitals{
    CapitalLetters{0xC0, 0xD6, 1, 32},   CapitalLetters{0xD8, 0xDE, 1, 32},   CapitalLetters{0x100, 0x12E, 2, 1},
    CapitalLetters{0x132, 0x136, 2, 1},  CapitalLetters{0x139, 0x147, 2, 1},  CapitalLetters{0x14A, 0x176, 2, 1},
    CapitalLetters{0x179, 0x17D, 2, 1},  CapitalLetters{0x388, 0x38A, 1, 37}, CapitalLetters{0x391, 0x3A1, 1, 32},
    CapitalLetters{0x3A3, 0x3AB, 1, 32}, CapitalLetters{0x400, 0x40F, 1, 80}, CapitalLetters{0x410, 0x42F, 1, 32},
};

wchar_t lowerCaseLetter(wchar_t character)
{
    const auto code = static_cast<char32_t>(character);
    if (code < kCapitals.front().first) // as nearly always
        return toLowerAscii(character);
    for (const CapitalLetters& letters : kCapitals) {
        if (code >= letters.first && code <= letters.last && (code - letters.first) % letters.step == 0)
            return static_cast<wchar_t>(code + letters.distance);
    }
    return character;
}

template <class Character>
std::basic_string<Character> lowerAsciiText(std::basic_string_view<Character> text)
{
    std::basic_string<Character> result(text);
    for (Character& character : result)
        character = toLowerAscii(character);
    return result;
}

template <class Character>
bool isEqualInLowerAscii(std::basic_string_view<Character> left, std::basic_string_view<Character> right)
{
    return std::ranges::equal(left, right, {}, toLowerAscii<Character>, toLowerAscii<Character>);
}

} // namespace

std::string toUpperAscii(std::string_view text)
{
    std::string result(text);
    for (char& character : result) {
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - ('a' - 'A'));
    }
    return result;
}

std::string toLowerAscii(std::string_view text)
{
    return lowerAsciiText(text);
}

std::wstring toLowerAscii(std::wstring_view text)
{
    return lowerAsciiText(text);
}

bool equalsIgnoringAsciiCase(std::string_view left, std::string_view right)
{
    return isEqualInLowerAscii(left, right);
}

bool equalsIgnoringAsciiCase(std::wstring_view left, std::wstring_view right)
{
    return isEqualInLowerAscii(left, right);
}

std::wstring toLowerCase(std::wstring_view text)
{
    std::wstring result(text);
    std::ranges::transform(result, result.begin(), lowerCaseLetter);
    return result;
}

} // namespace Embedded
