#include "orvelcs/cli/display_width.h"

#include <algorithm>
#include <array>
#include <iterator>

#include <utf8.h>

namespace Orvelcs {
namespace {

struct CharacterRange {
    char32_t first;
    char32_t last;
};

constexpr std::array kWithoutWidth{
    CharacterRange{0x0300, 0x036F}, CharacterRange{0x0591, 0x05BD}, CharacterRange{0x064B, 0x065F},
    CharacterRange{0x093C, 0x093C}, CharacterRange{0x0E34, 0x0E3A}, CharacterRange{0x1AB0, 0x1AFF},
    CharacterRange{0x1DC0, 0x1DFF}, CharacterRange{0x200B, 0x200F}, CharacterRange{0x20D0, 0x20FF},
    CharacterRange{0xFE00, 0xFE0F}, CharacterRange{0xFE20, 0xFE2F}, CharacterRange{0xFEFF, 0xFEFF}};

constexpr std::array kWide{
    CharacterRange{0x1100, 0x115F},   CharacterRange{0x2E80, 0x303E},  CharacterRange{0x3041, 0x33FF},
    CharacterRange{0x3400, 0x4DBF},   CharacterRange{0x4E00, 0x9FFF},  CharacterRange{0xA000, 0xA4CF},
    CharacterRange{0xAC00, 0xD7A3},   CharacterRange{0xF900, 0xFAFF},  CharacterRange{0xFE30, 0xFE6F},
    CharacterRange{0xFF00, 0xFF60},   CharacterRange{0xFFE0, 0xFFE6},  CharacterRange{0x1F300, 0x1F64F},
    CharacterRange{0x1F900, 0x1F9FF}, CharacterRange{0x20000, 0x3FFFD}};

template <std::size_t Count>
bool isIn(const std::array<CharacterRange, Count>& ranges, char32_t character)
{
    const auto after = std::ranges::upper_bound(ranges, character, {}, &CharacterRange::first);
    return after != ranges.begin() && character <= std::prev(after)->last;
}

std::size_t columnsOf(char32_t character)
{
    if (character < kWithoutWidth.front().first)
        return 1;
    return isIn(kWithoutWidth, character) ? 0 : isIn(kWide, character) ? 2 : 1;
}

} // namespace

std::size_t displayWidth(std::string_view utf8)
{
    std::size_t width = 0;
    for (auto place = utf8.begin(); place != utf8.end();)
        width += columnsOf(utf8::next(place, utf8.end()));
    return width;
}

std::string truncated(const std::string& utf8, std::size_t mostColumns)
{
    if (displayWidth(utf8) <= mostColumns)
        return utf8;
    if (mostColumns == 0)
        return "";
    std::size_t width = 0;
    auto place = utf8.begin();
    for (auto next = place;; place = next) {
        width += columnsOf(utf8::next(next, utf8.end()));
        if (width >= mostColumns) // the last column is that of "…"
            break;
    }
    return std::string(utf8.begin(), place) + "…";
}

} // namespace Orvelcs
