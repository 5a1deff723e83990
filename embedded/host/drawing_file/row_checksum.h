// The checksum that each row of a drawing file carries: 64 bits over its table and the values of its other columns.
#pragma once

#include <cstdint>
#include <string_view>

namespace Embedded {

class RowChecksum {
public:
    explicit RowChecksum(std::string_view table) { add(table); }

    RowChecksum& add(std::int64_t number);
    RowChecksum& add(double number);
    /// Texts and blobs of the same bytes have different checksums.
    RowChecksum& add(std::string_view bytes, bool isBlob = false);
    RowChecksum& addNull();

    std::int64_t value() const { return static_cast<std::int64_t>(sum_); }

private:
    void add(char kind, const void* bytes, std::size_t length);

    std::uint64_t sum_ = 0;
};

/// The number of rows that belong to something and the sum of their checksums. Rows can be added and removed.
struct RowDigest {
    std::int64_t rows = 0;
    std::int64_t sum = 0;

    void add(std::int64_t checksum) { *this += {1, checksum}; }
    void remove(std::int64_t checksum)
    {
        *this += {-1, static_cast<std::int64_t>(0 - static_cast<std::uint64_t>(checksum))};
    }
    RowDigest& operator+=(const RowDigest& other)
    {
        rows += other.rows;
        sum = static_cast<std::int64_t>(static_cast<std::uint64_t>(sum) + static_cast<std::uint64_t>(other.sum));
        return *this;
    }
    friend bool operator==(const RowDigest&, const RowDigest&) = default;
};

} // namespace Embedded
