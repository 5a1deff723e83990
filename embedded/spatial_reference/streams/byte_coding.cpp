#include "embedded/spatial_reference/streams/byte_coding.h"

#include "embedded/base/error.h"
#include "embedded/base/text.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {

void ByteWriter::varint(std::uint64_t value)
{
    for (; value > 0x7F; value >>= 7)
        byte(static_cast<unsigned>(value & 0x7F) | 0x80);
    byte(static_cast<unsigned>(value));
}

void ByteWriter::littleEndian(std::uint64_t value, int lengthInBytes)
{
    for (; lengthInBytes > 0; --lengthInBytes, value >>= 8)
        byte(static_cast<unsigned>(value & 0xFF));
}

void ByteWriter::text(std::string_view utf8)
{
    varint(utf8.size());
    bytes_ += utf8;
}

unsigned ByteReader::byte()
{
    if (bytes_.empty())
        throwDamaged("the bytes end early");
    const auto value = static_cast<unsigned char>(bytes_.front());
    bytes_.remove_prefix(1);
    return value;
}

std::uint64_t ByteReader::varint()
{
    std::uint64_t value = 0;
    for (int shift = 0; shift < 64; shift += 7) {
        const unsigned next = byte();
        const std::uint64_t bits = next & 0x7F;
        if ((bits << shift) >> shift != bits)
            break;
        value |= bits << shift;
        if (next < 0x80)
            return value;
    }
    throwDamaged("a number has more than 64 bits");
}

std::uint64_t ByteReader::littleEndian(int lengthInBytes)
{
    std::uint64_t value = 0;
    for (int shift = 0; shift < 8 * lengthInBytes; shift += 8)
        value |= std::uint64_t{byte()} << shift;
    return value;
}

std::string ByteReader::text()
{
    std::string utf8(bytes_.substr(0, count()));
    bytes_.remove_prefix(utf8.size());
    if (!isValidUtf8(utf8))
        throwDamaged("a text is not UTF-8");
    // Whoever reads the text as a C string would see it end at the NUL.
    if (utf8.find('\0') != std::string::npos)
        throwDamaged("a text has a NUL");
    return utf8;
}

std::size_t ByteReader::count()
{
    const std::uint64_t number = varint();
    if (number > remaining())
        throwDamaged("a length goes beyond the end of the bytes");
    return static_cast<std::size_t>(number);
}

void throwDamaged(const char* reason)
{
    throw ErrorException(Error{Zentara::Infrastructure::SpatialReference::statusUnreadable, reason, {}});
}

std::uint32_t crc32(std::string_view bytes)
{
    std::uint32_t remainder = 0xFFFFFFFF;
    for (const char character : bytes) {
        remainder ^= static_cast<unsigned char>(character);
        for (int bit = 0; bit < 8; ++bit)
            remainder = remainder >> 1 ^ (remainder & 1 ? 0xEDB88320U : 0U);
    }
    return ~remainder;
}

} // namespace Embedded
