// Reads the input byte by byte, for a target that makes decisions. After the end it reads zeros.
#pragma once

#include <algorithm>
#include <cstddef>

#include "fuzz/targets.h"

namespace Fuzz {

class ByteSource {
public:
    explicit ByteSource(Input input) : left_(input) {}

    bool isEmpty() const { return left_.empty(); }
    std::uint8_t byte()
    {
        const Input one = bytes(1);
        return one.empty() ? std::uint8_t{0} : one.front();
    }
    /// A number below `limit`, which is at most 256.
    std::size_t below(std::size_t limit) { return byte() % limit; }
    /// The next `count` bytes, or all that are left.
    Input bytes(std::size_t count)
    {
        const Input next = left_.first(std::min(count, left_.size()));
        left_ = left_.subspan(next.size());
        return next;
    }
    Input rest() { return bytes(left_.size()); }

private:
    Input left_;
};

} // namespace Fuzz
