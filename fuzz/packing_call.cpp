#include "fuzz/packing_call.h"

#include <cstring>

#include "fuzz/oracle.h"

namespace Fuzz {
namespace {

constexpr unsigned char kUntouchedByte = 0xA5;
constexpr std::size_t kGuardLength = 160; // longer than any packet

bool isUntouched(const unsigned char* guard)
{
    static const Bytes untouched(kGuardLength, kUntouchedByte);
    return std::memcmp(guard, untouched.data(), kGuardLength) == 0;
}

} // namespace

Bytes checkedPackingCall(PackingCall call, Input input, std::size_t capacity)
{
    Bytes output(capacity + kGuardLength, kUntouchedByte);
    const std::size_t length = call(input.data(), input.size(), output.data(), capacity);
    require(length <= capacity, "no more is said to be written than there is room for");
    require(isUntouched(output.data() + capacity), "nothing is written past the end");
    output.resize(length);
    return output;
}

} // namespace Fuzz
