#include "embedded/host/drawing_refusal.h"

#include <algorithm>

#include "embedded/foundation/text.h"

namespace Embedded {
namespace {

constexpr std::size_t kLongestExcerptInBytes = 40;

bool isControl(char character)
{
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

} // namespace

std::string excerpt(std::string_view utf8)
{
    const std::string_view beginning = beginningOfUtf8(utf8, kLongestExcerptInBytes);
    std::string shown = utf8FromWide(wideFromUtf8(beginning));
    std::replace_if(shown.begin(), shown.end(), isControl, '?');
    return beginning.size() < utf8.size() ? shown + "…" : shown;
}

} // namespace Embedded
