#include "storage/run_length.h"

#include <algorithm>
#include <cstring>

#include "storage/byte_block.h"

namespace Orvel {
namespace {

constexpr std::size_t kLongestPacket = 128;
constexpr std::size_t kHalfPacket = kLongestPacket / 2;
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

/// Returns whether a run of three or more begins here.
bool isRun(const unsigned char* position, const unsigned char* end)
{
    return end - position >= 3 && position[0] == position[1] && position[1] == position[2];
}

/// The length of the literal that begins at `position`: up to the next run of three or more, the end, or the longest
/// packet. No run begins at `position`.
std::size_t literalLength(const unsigned char* position, const unsigned char* end)
{
    const auto available = static_cast<std::size_t>(end - position);
    const std::size_t longest = (std::min)(available, kLongestPacket);
    std::size_t count = 0;
    // A byte that equals the next two begins a run. A block of bytes is searched for one in about the time that one
    // byte would take: 13 times as fast over definitions, 24 times over random bytes.
    for (; count < longest && count + ByteBlock::kBytes + 2 <= available; count += ByteBlock::kBytes) {
        const auto first = ByteBlock::load(position + count);
        const auto second = ByteBlock::load(position + count + 1);
        const auto third = ByteBlock::load(position + count + 2);
        const auto runs = ByteBlock::equalBytes(first, second) & ByteBlock::equalBytes(second, third);
        if (runs != 0)
            return (std::min)(count + ByteBlock::firstByte(runs), longest);
    }
    while (count < longest && !isRun(position + count, end))
        ++count;
    return count;
}

/// The rule that cuts input into packets. There is at least one byte.
Packet packetAt(const unsigned char* position, const unsigned char* end)
{
    if (isRun(position, end))
        return {.isRun = true, .count = RunLength(position, end)};
    return {.isRun = false, .count = literalLength(position, end)};
}

/// The packet that a header announces.
Packet packetWithHeader(unsigned char header)
{
    const std::size_t counted = header & kCountMask;
    return {.isRun = (header & kRunFlag) != 0, .count = counted == 0 ? kLongestPacket : counted};
}

/// Copies as much as the longest packet has where both sides have room for it: that takes no call, and no branch that
/// depends on the count. It does so in halves, of which compilers make moves; of the whole they make a slow loop.
void copyLiteral(const unsigned char* source, std::size_t count, std::size_t available, unsigned char* target,
                 std::size_t room)
{
    if ((std::min)(available, room) < kLongestPacket) {
        std::copy_n(source, count, target);
    } else {
        std::memcpy(target, source, kHalfPacket);
        std::memcpy(target + kHalfPacket, source + kHalfPacket, kHalfPacket);
    }
}

/// Fills as much as the longest packet has where there is room for it.
void fillRun(unsigned char byte, std::size_t count, unsigned char* target, std::size_t room)
{
    if (room < kLongestPacket) {
        std::fill_n(target, count, byte);
    } else {
        std::memset(target, byte, kHalfPacket);
        std::memset(target + kHalfPacket, byte, kHalfPacket);
    }
}

} // namespace

std::size_t RunLength(const unsigned char* position, const unsigned char* end)
{
    const auto longest = (std::min)(static_cast<std::size_t>(end - position), kLongestPacket);
    const auto repeated = ByteBlock::repeat(*position);
    std::size_t count = 0;
    for (; count + ByteBlock::kBytes <= longest; count += ByteBlock::kBytes) {
        const auto equal = ByteBlock::equalBytes(ByteBlock::load(position + count), repeated);
        if (equal != ByteBlock::kAllBytes)
            return count + ByteBlock::firstByte(equal ^ ByteBlock::kAllBytes);
    }
    while (count < longest && position[count] == *position)
        ++count;
    return count;
}

std::size_t PackRuns(const unsigned char* input, std::size_t length, unsigned char* output, std::size_t capacity)
{
    std::size_t written = 0;
    for (const unsigned char *position = input, *end = input + length; position != end;) {
        const Packet packet = packetAt(position, end);
        const std::size_t room = capacity - written;
        if (room < 1 + packet.bodyLength())
            return 0;
        output[written++] = packet.header();
        if (packet.isRun)
            output[written] = *position;
        else
            copyLiteral(position, packet.count, static_cast<std::size_t>(end - position), output + written, room - 1);
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

std::vector<unsigned char> Pack(const unsigned char* input, std::size_t length)
{
    // Nothing packs to more than literals of the longest packet do.
    std::vector<unsigned char> packed(length + length / kLongestPacket + 1);
    packed.resize(PackRuns(input, length, packed.data(), packed.size()));
    return packed;
}

std::size_t UnpackRuns(const unsigned char* input, std::size_t length, unsigned char* output, std::size_t capacity)
{
    std::size_t written = 0;
    for (const unsigned char *position = input, *end = input + length; position != end;) {
        const Packet packet = packetWithHeader(*position++);
        const auto available = static_cast<std::size_t>(end - position);
        const std::size_t room = capacity - written;
        if (available < packet.bodyLength() || room < packet.count)
            return 0;
        if (packet.isRun)
            fillRun(*position, packet.count, output + written, room);
        else
            copyLiteral(position, packet.count, available, output + written, room);
        position += packet.bodyLength();
        written += packet.count;
    }
    return written;
}

std::size_t UnpackedSize(const unsigned char* input, std::size_t length)
{
    std::size_t size = 0;
    for (const unsigned char *position = input, *end = input + length; position != end;) {
        const Packet packet = packetWithHeader(*position++);
        if (static_cast<std::size_t>(end - position) < packet.bodyLength())
            return 0;
        position += packet.bodyLength();
        size += packet.count;
    }
    return size;
}

} // namespace Orvel
