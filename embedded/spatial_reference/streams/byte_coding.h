// Bytes of the binary stream: little-endian numbers and variable-length integers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Embedded {

class ByteWriter {
public:
    void byte(unsigned value) { bytes_ += static_cast<char>(value & 0xFF); }
    /// Seven bits a byte, the low ones first, the high bit set on all but the last.
    void varint(std::uint64_t value);
    /// The low `count` bytes, the lowest first.
    void littleEndian(std::uint64_t value, int count);
    void text(std::string_view utf8);

    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// Every call gives nothing at the end of the bytes and takes nothing then.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    std::optional<unsigned> byte();
    std::optional<std::uint64_t> varint();
    std::optional<std::uint64_t> littleEndian(int count);
    /// Valid UTF-8 without NUL only.
    std::optional<std::string> text();
    /// A number of things that take at least one byte each.
    std::optional<std::size_t> count();

    std::size_t remaining() const { return bytes_.size(); }

private:
    std::string_view bytes_;
};

/// The checksum of ISO 3309 and zlib.
std::uint32_t crc32(std::string_view bytes);

} // namespace Embedded
