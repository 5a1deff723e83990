#include "embedded/host/database/handle.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "embedded/base/text.h"

namespace Embedded {
namespace {

constexpr std::size_t kLongestExcerptInBytes = 40;

bool isControl(char character)
{
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

} // namespace

std::string hexFromHandle(std::uint64_t handle)
{
    std::array<char, 2 * sizeof handle> digits{};
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), handle, 16).ptr;
    std::string text(digits.data(), end);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit; });
    return text;
}

std::string placeOf(std::uint64_t handle)
{
    return "object " + hexFromHandle(handle) + ": ";
}

std::string truncateForMessage(std::string_view utf8)
{
    const std::string_view beginning = beginningOfUtf8(utf8, kLongestExcerptInBytes);
    std::string shown = utf8FromWide(wideFromUtf8(beginning));
    std::replace_if(shown.begin(), shown.end(), isControl, '?');
    return beginning.size() < utf8.size() ? shown + "…" : shown;
}

} // namespace Embedded
