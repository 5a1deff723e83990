// The parts that the definition stream is made of: bytes, numbers and texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Embedded {

class ByteWriter {
public:
    void byte(unsigned value) { bytes_ += static_cast<char>(value & 0xFF); }
    /// Seven bits a byte, the low ones first, the high bit set on all but the last.
    void varint(std::uint64_t value);
    /// The low bytes of the value, the lowest first.
    void littleEndian(std::uint64_t value, int lengthInBytes);
    /// The length in bytes as a varint, and the bytes.
    void text(std::string_view utf8);

    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// Every call throws ErrorException with statusUnreadable for bytes that are damaged or end early.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    unsigned byte();
    std::uint64_t varint();
    std::uint64_t littleEndian(int lengthInBytes);
    /// Accepts only valid UTF-8 without NUL.
    std::string text();
    /// A number of things that take at least one byte each.
    std::size_t count();

    std::size_t remaining() const { return bytes_.size(); }

private:
    std::string_view bytes_;
};

/// Throws ErrorException with statusUnreadable.
[[noreturn]] void throwDamaged(const char* reason);

/// CRC-32 of ISO 3309, as zlib computes it.
std::uint32_t crc32(std::string_view bytes);

} // namespace Embedded
