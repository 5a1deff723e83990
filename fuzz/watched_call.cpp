#include "fuzz/watched_call.h"

#include <cstring>

#include "fuzz/oracle.h"

namespace Fuzz {
namespace {

constexpr unsigned char kUntouchedByte = 0xA5;
constexpr std::size_t kBorder = 160; // more than any packet

bool isUntouched(const unsigned char* border)
{
    static const Bytes untouched(kBorder, kUntouchedByte);
    return std::memcmp(border, untouched.data(), kBorder) == 0;
}

} // namespace

Bytes watchedCall(PackingCall call, Input input, std::size_t capacity)
{
    Bytes output(capacity + kBorder, kUntouchedByte);
    const std::size_t length = call(input.data(), input.size(), output.data(), capacity);
    require(length <= capacity, "no more is said to be written than there is room for");
    require(isUntouched(output.data() + capacity), "nothing is written past the end");
    output.resize(length);
    return output;
}

} // namespace Fuzz
