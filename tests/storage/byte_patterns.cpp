#include "storage/byte_patterns.h"

namespace Tests {

Bytes repeated(unsigned char byte, std::size_t count)
{
    return Bytes(count, byte);
}

Bytes distinct(std::size_t count, unsigned char first)
{
    Bytes bytes(count);
    for (std::size_t index = 0; index < count; ++index)
        bytes[index] = static_cast<unsigned char>(first + index);
    return bytes;
}

Bytes joined(std::initializer_list<Bytes> parts)
{
    Bytes bytes;
    for (const Bytes& part : parts)
        bytes.insert(bytes.end(), part.begin(), part.end());
    return bytes;
}

std::string hexOf(const Bytes& bytes)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 0xF];
    }
    return text;
}

} // namespace Tests
