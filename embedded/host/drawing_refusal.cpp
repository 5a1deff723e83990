#include "embedded/host/drawing_refusal.h"

#include <algorithm>

#include "embedded/foundation/text.h"

namespace Embedded {
namespace {

constexpr std::size_t kLongestExcerptInBytes = 40;

bool isContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

bool isControl(char character)
{
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

} // namespace

std::string excerpt(std::string_view utf8)
{
    std::size_t length = std::min(utf8.size(), kLongestExcerptInBytes);
    while (length > 0 && length < utf8.size() && isContinuationByte(utf8[length]))
        --length;
    std::string shown = utf8FromWide(wideFromUtf8(utf8.substr(0, length)));
    std::replace_if(shown.begin(), shown.end(), isControl, '?');
    return length < utf8.size() ? shown + "…" : shown;
}

} // namespace Embedded
