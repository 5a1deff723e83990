#include "embedded/windows/registry_name.h"

#include <algorithm>
#include <array>

#include "embedded/base/text.h"

namespace Embedded {
namespace {

/// Capital letters from `first` to `last`, each `step` after the one before, and how far away their small ones are.
struct CapitalLetters {
    char32_t first;
    char32_t last;
    char32_t step;
    char32_t distance;
};
constexpr std::array kCapitals{
    CapitalLetters{U'A', U'Z', 1, 32},   CapitalLetters{0xC0, 0xD6, 1, 32},   CapitalLetters{0xD8, 0xDE, 1, 32},
    CapitalLetters{0x100, 0x12E, 2, 1},  CapitalLetters{0x132, 0x136, 2, 1},  CapitalLetters{0x139, 0x147, 2, 1},
    CapitalLetters{0x14A, 0x176, 2, 1},  CapitalLetters{0x179, 0x17D, 2, 1},  CapitalLetters{0x388, 0x38A, 1, 37},
    CapitalLetters{0x391, 0x3A1, 1, 32}, CapitalLetters{0x3A3, 0x3AB, 1, 32}, CapitalLetters{0x400, 0x40F, 1, 80},
    CapitalLetters{0x410, 0x42F, 1, 32},
};

wchar_t folded(wchar_t character)
{
    const auto code = static_cast<char32_t>(character);
    for (const CapitalLetters& letters : kCapitals) {
        if (code >= letters.first && code <= letters.last && (code - letters.first) % letters.step == 0)
            return static_cast<wchar_t>(code + letters.distance);
    }
    return character;
}

} // namespace

std::wstring normalName(const wchar_t* text)
{
    return text == nullptr ? std::wstring() : wideFromUtf16le(utf16leFromWide(text));
}

std::wstring foldedName(std::wstring_view name)
{
    std::wstring result(name);
    std::ranges::transform(result, result.begin(), folded);
    return result;
}

std::size_t utf16Length(std::wstring_view text)
{
    return utf16leFromWide(text).size() / 2;
}

std::vector<std::wstring_view> pathParts(std::wstring_view path)
{
    std::vector<std::wstring_view> parts;
    while (!path.empty()) {
        const std::size_t length = std::min(path.find(L'\\'), path.size());
        if (length > 0)
            parts.push_back(path.substr(0, length));
        path.remove_prefix(std::min(length + 1, path.size()));
    }
    return parts;
}

} // namespace Embedded
