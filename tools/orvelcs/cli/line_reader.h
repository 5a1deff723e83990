// Standard input line by line, holding no more than one line.
#pragma once

#include <cstddef>
#include <string>

namespace Orvelcs {

class LineReader {
public:
    /// A longer line is read to its end, but only so much of it is kept.
    static constexpr std::size_t kLongestLineInBytes = 4096;

    /// False at the end. Throws Failure when standard input cannot be read.
    [[nodiscard]] bool next();

    /// Without its end, and the first without a byte-order mark.
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
