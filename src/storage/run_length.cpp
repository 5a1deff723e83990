#include "storage/run_length.h"

#include <algorithm>

namespace Orvel {
namespace {

constexpr std::size_t kLongestPacket = 128;
constexpr std::size_t kShortestRun = 3;
constexpr unsigned char kRunFlag = 0x80;
constexpr unsigned char kCountMask = 0x7F;

struct Packet {
    bool isRun;
    std::size_t count; // of unpacked bytes

    /// The number of bytes after the header.
    std::size_t bodyLength() const { return isRun ? 1 : count; }
    unsigned char header() const
    {
        const auto counted = static_cast<unsigned char>(count & kCountMask); // 128 is written as 0
        return isRun ? counted | kRunFlag : counted;
    }
};

/// The length of the literal that begins with `count` bytes at `position`: up to the next run of three or more, the
/// end, or the longest packet.
std::size_t literalLength(const unsigned char* position, std::size_t count, const unsigned char* end)
{
    const std::size_t longest = std::min(static_cast<std::size_t>(end - position), kLongestPacket);
    while (count < longest) {
        const std::size_t run = RunLength(position + count, end);
        if (run >= kShortestRun)
            break;
        count += run;
    }
    return std::min(count, longest);
}

/// The rule that cuts input into packets. There is at least one byte.
Packet packetAt(const unsigned char* position, const unsigned char* end)
{
    const std::size_t run = RunLength(position, end);
    if (run >= kShortestRun)
        return {.isRun = true, .count = run};
    return {.isRun = false, .count = literalLength(position, run, end)};
}

/// Reads packed input and calls `take` with each packet and its body. False when the input ends inside a packet or
/// `take` returns false.
template <class Take>
bool forEachPacket(const unsigned char* input, std::size_t length, Take take)
{
    std::size_t position = 0;
    while (position < length) {
        const unsigned char header = input[position++];
        const std::size_t counted = header & kCountMask;
        const Packet packet{.isRun = (header & kRunFlag) != 0, .count = counted == 0 ? kLongestPacket : counted};
        if (length - position < packet.bodyLength() || !take(packet, input + position))
            return false;
        position += packet.bodyLength();
    }
    return true;
}

} // namespace

std::size_t RunLength(const unsigned char* position, const unsigned char* end)
{
    const auto longest = std::min(static_cast<std::size_t>(end - position), kLongestPacket);
    return static_cast<std::size_t>(
        std::find_if(position, position + longest, [=](unsigned char byte) { return byte != *position; }) - position);
}

std::size_t PackRuns(const unsigned char* input, std::size_t length, unsigned char* output, std::size_t capacity)
{
    std::size_t written = 0;
    for (const unsigned char *position = input, *end = input + length; position != end;) {
        const Packet packet = packetAt(position, end);
        if (capacity - written < 1 + packet.bodyLength())
            return 0;
        output[written++] = packet.header();
        std::copy_n(position, packet.bodyLength(), output + written);
        written += packet.bodyLength();
        position += packet.count;
    }
    return written;
}

std::size_t PackedSize(const unsigned char* input, std::size_t length)
{
    std::size_t size = 0;
    for (const unsigned char *position = input, *end = input + length; position != end;) {
        const Packet packet = packetAt(position, end);
        size += 1 + packet.bodyLength();
        position += packet.count;
    }
    return size;
}

std::size_t UnpackRuns(const unsigned char* input, std::size_t length, unsigned char* output, std::size_t capacity)
{
    std::size_t written = 0;
    const bool whole = forEachPacket(input, length, [&](const Packet& packet, const unsigned char* body) {
        if (capacity - written < packet.count)
            return false;
        if (packet.isRun)
            std::fill_n(output + written, packet.count, *body);
        else
            std::copy_n(body, packet.count, output + written);
        written += packet.count;
        return true;
    });
    return whole ? written : 0;
}

std::size_t UnpackedSize(const unsigned char* input, std::size_t length)
{
    std::size_t size = 0;
    const bool whole = forEachPacket(input, length, [&](const Packet& packet, const unsigned char*) {
        size += packet.count;
        return true;
    });
    return whole ? size : 0;
}

} // namespace Orvel
