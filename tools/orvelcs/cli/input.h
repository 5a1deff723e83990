// Reading files and standard input.
#pragma once

#include <cstddef>
#include <string>

namespace Orvelcs {

/// The name that stands for standard input or output where a file is expected.
inline constexpr const char* kStandardStream = "-";

/// Reads the file to its end; for "-", standard input. Throws Failure when it cannot be read or is longer than
/// `limitInBytes` (0: no limit).
std::string readWhole(const std::string& file, std::size_t limitInBytes = 0);

/// Reads the file as a text in UTF-8, with or without a byte-order mark. Throws Failure as readWhole does, and for a
/// text that is not UTF-8 or holds a NUL.
std::wstring readText(const std::string& file, std::size_t limitInBytes = 0);

/// Reads standard input line by line and holds no more than one line.
class LineReader {
public:
    /// A longer line is read to its end, but only so much of it is kept.
    static constexpr std::size_t kLongestLineInBytes = 4096;

    /// False at the end. Throws Failure when standard input cannot be read.
    [[nodiscard]] bool next();

    /// The line without its end. The first is also without a byte-order mark.
    const std::string& line() const { return line_; }
    bool isTooLong() const { return isTooLong_; }
    /// From 1.
    std::size_t number() const { return number_; }

private:
    std::string line_;
    bool isTooLong_ = false;
    std::size_t number_ = 0;
};

} // namespace Orvelcs
