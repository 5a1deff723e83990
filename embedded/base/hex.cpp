#include "embedded/base/hex.h"

namespace Embedded {
namespace {

constexpr std::string_view kLowerCaseDigits = "0123456789abcdef";
constexpr std::string_view kUpperCaseDigits = "0123456789ABCDEF";

std::string hexFromNumber(std::uint64_t number, std::size_t minimumDigits, std::string_view digits)
{
    std::string text;
    for (; number != 0 || text.size() < minimumDigits; number >>= 4)
        text.insert(text.begin(), digits[number & 0xF]);
    return text;
}

std::optional<unsigned> digitValueAt(std::string_view hex, std::size_t index)
{
    return hexDigitValue(static_cast<wchar_t>(static_cast<unsigned char>(hex[index])));
}

} // namespace

std::string hexFromBytes(std::string_view bytes)
{
    std::string hex;
    hex.reserve(bytes.size() * 2);
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        hex += kLowerCaseDigits[value >> 4];
        hex += kLowerCaseDigits[value & 0xF];
    }
    return hex;
}

Expected<std::string> bytesFromHex(std::string_view hex)
{
    for (std::size_t index = 0; index < hex.size(); ++index) {
        if (!digitValueAt(hex, index))
            return failure(0, "expected hexadecimal digits, found something else as character " +
                                  std::to_string(index + 1));
    }
    if (hex.size() % 2 != 0)
        return failure(0, "expected an even number of hexadecimal digits, found " + std::to_string(hex.size()));
    std::string bytes;
    bytes.reserve(hex.size() / 2);
    for (std::size_t index = 0; index < hex.size(); index += 2)
        bytes += static_cast<char>(*digitValueAt(hex, index) << 4 | *digitValueAt(hex, index + 1));
    return bytes;
}

std::string upperCaseHex(std::uint64_t number, std::size_t minimumDigits)
{
    return hexFromNumber(number, minimumDigits, kUpperCaseDigits);
}

std::string lowerCaseHex(std::uint64_t number, std::size_t minimumDigits)
{
    return hexFromNumber(number, minimumDigits, kLowerCaseDigits);
}

} // namespace Embedded
