// Cuts a stream of bytes into lines, a block at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace Orvelcs {

/// Hands out the lines of each block before it reads the next one:
///
///     while (reader.readBlock())
///         while (reader.nextLine())
///             … reader.line() …
class LineReader {
public:
    static constexpr std::size_t kLongestLineInBytes = std::size_t{1024} * 1024;
    static constexpr std::size_t kBlockInBytes = std::size_t{64} * 1024;

    /// Reads `length` bytes at most. Returns how many, 0 at the end alone.
    using Source = std::function<std::size_t(char* bytes, std::size_t length)>;

    /// A line that is longer than `longestInBytes` is read to its end, but only so much of it is kept.
    explicit LineReader(Source source, std::size_t blockInBytes = kBlockInBytes,
                        std::size_t longestInBytes = kLongestLineInBytes);

    /// Returns false at the end, when no line is left. A block may end in the middle of a line, and may complete none.
    [[nodiscard]] bool readBlock();
    /// Returns false when the block has no further line that is complete.
    [[nodiscard]] bool nextLine();

    /// The line without its end. The first is also without a byte-order mark. Holds until the next block is read.
    std::string_view line() const { return line_; }
    /// Whether the first line had a byte-order mark.
    bool hadByteOrderMark() const { return hadByteOrderMark_; }
    bool isTooLong() const { return isTooLong_; }
    /// From 1.
    std::size_t number() const { return number_; }

private:
    void setLine(std::string_view whole);

    Source source_;
    std::size_t longestInBytes_;
    std::vector<char> bytes_;
    std::size_t begin_ = 0; // of what has not been handed out
    std::size_t end_ = 0;
    bool isAtEnd_ = false;
    std::string_view line_;
    bool isTooLong_ = false;
    bool hadByteOrderMark_ = false;
    std::size_t number_ = 0;
};

} // namespace Orvelcs
