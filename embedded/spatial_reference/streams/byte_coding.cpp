#include "embedded/spatial_reference/streams/byte_coding.h"

#include "embedded/base/text.h"

namespace Embedded {

void ByteWriter::varint(std::uint64_t value)
{
    for (; value > 0x7F; value >>= 7)
        byte(static_cast<unsigned>(value & 0x7F) | 0x80);
    byte(static_cast<unsigned>(value));
}

void ByteWriter::littleEndian(std::uint64_t value, int count)
{
    for (; count > 0; --count, value >>= 8)
        byte(static_cast<unsigned>(value & 0xFF));
}

void ByteWriter::text(std::string_view utf8)
{
    varint(utf8.size());
    bytes_ += utf8;
}

std::optional<unsigned> ByteReader::byte()
{
    if (bytes_.empty())
        return std::nullopt;
    const auto value = static_cast<unsigned char>(bytes_.front());
    bytes_.remove_prefix(1);
    return value;
}

std::optional<std::uint64_t> ByteReader::varint()
{
    std::uint64_t value = 0;
    for (int shift = 0; shift < 64; shift += 7) {
        const auto next = byte();
        if (!next)
            return std::nullopt;
        const std::uint64_t bits = *next & 0x7F;
        if ((bits << shift) >> shift != bits)
            return std::nullopt;
        value |= bits << shift;
        if (*next < 0x80)
            return value;
    }
    return std::nullopt;
}

std::optional<std::uint64_t> ByteReader::littleEndian(int count)
{
    std::uint64_t value = 0;
    for (int shift = 0; shift < 8 * count; shift += 8) {
        const auto next = byte();
        if (!next)
            return std::nullopt;
        value |= std::uint64_t{*next} << shift;
    }
    return value;
}

std::optional<std::string> ByteReader::text()
{
    const auto length = count();
    if (!length || !isValidUtf8(bytes_.substr(0, *length)))
        return std::nullopt;
    std::string utf8(bytes_.substr(0, *length));
    if (utf8.find('\0') != std::string::npos) // it would end there for whoever asks
        return std::nullopt;
    bytes_.remove_prefix(*length);
    return utf8;
}

std::optional<std::size_t> ByteReader::count()
{
    const auto number = varint();
    if (!number || *number > remaining())
        return std::nullopt;
    return static_cast<std::size_t>(*number);
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
