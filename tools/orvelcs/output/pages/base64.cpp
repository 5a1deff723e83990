#include "orvelcs/output/pages/base64.h"

#include <cstddef>
#include <cstdint>

namespace Orvelcs {

std::string encodeBase64(std::string_view bytes)
{
    constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t kGroup = 3; // bytes in four characters
    std::string text;
    text.reserve((bytes.size() + 2) / kGroup * 4);
    for (std::size_t start = 0; start < bytes.size(); start += kGroup) {
        const std::string_view group = bytes.substr(start, kGroup);
        std::uint32_t bits = 0;
        for (std::size_t index = 0; index < kGroup; ++index)
            bits = bits << 8U | (index < group.size() ? static_cast<unsigned char>(group[index]) : 0U);
        for (std::size_t index = 0; index <= kGroup; ++index)
            text += index <= group.size() ? kAlphabet[bits >> (18 - 6 * index) & 63U] : '=';
    }
    return text;
}

} // namespace Orvelcs
