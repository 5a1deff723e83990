#include "storage/byte_patterns.h"

#include <stdexcept>
#include <string_view>

namespace Tests {
namespace {

int digitValue(char digit)
{
    const std::size_t value = std::string_view("0123456789abcdef").find(digit);
    if (value == std::string_view::npos)
        throw std::runtime_error(std::string("not a hexadecimal digit: ") + digit);
    return static_cast<int>(value);
}

} // namespace

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

std::string toHex(const Bytes& bytes)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 0xF];
    }
    return text;
}

Bytes parseHex(const std::string& digits)
{
    std::string packed = digits;
    std::erase(packed, ' ');
    if (packed.size() % 2 != 0)
        throw std::runtime_error("an odd number of hexadecimal digits: " + digits);
    Bytes bytes;
    for (std::size_t index = 0; index < packed.size(); index += 2)
        bytes.push_back(static_cast<unsigned char>(digitValue(packed[index]) * 16 + digitValue(packed[index + 1])));
    return bytes;
}

} // namespace Tests
