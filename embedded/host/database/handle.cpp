#include "embedded/host/database/handle.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Embedded {
std::string formatHandle(Handle handle)
{
    std::array<char, 2 * sizeof handle> digits{};
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), handle, 16).ptr;
    std::string text(digits.data(), end);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit; });
    return text;
}

std::string objectPlace(Handle handle)
{
    return "object " + formatHandle(handle);
}

} // namespace Embedded
