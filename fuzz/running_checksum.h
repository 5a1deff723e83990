// The CRC-32 of bytes that arrive in parts.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace Fuzz {

/// CRC-32 as in Ethernet and ZIP: polynomial 04C11DB7, reflected, all bits inverted at both ends.
class RunningChecksum {
public:
    void add(std::string_view bytes)
    {
        for (const char byte : bytes)
            state_ = kTable[(state_ ^ static_cast<unsigned char>(byte)) & 0xFF] ^ state_ >> 8;
    }
    std::uint32_t value() const { return ~state_; }

private:
    static constexpr std::array<std::uint32_t, 256> table()
    {
        std::array<std::uint32_t, 256> entries{};
        for (std::uint32_t index = 0; index < entries.size(); ++index) {
            std::uint32_t entry = index;
            for (int bit = 0; bit < 8; ++bit)
                entry = entry >> 1 ^ ((entry & 1) != 0 ? 0xEDB88320U : 0);
            entries[index] = entry;
        }
        return entries;
    }

    static const std::array<std::uint32_t, 256> kTable;
    std::uint32_t state_ = 0xFFFFFFFF;
};

inline constexpr std::array<std::uint32_t, 256> RunningChecksum::kTable = RunningChecksum::table();

} // namespace Fuzz
