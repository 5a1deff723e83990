// The input as what a target takes its decisions from, byte after byte. Behind its end there are zeros.
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
    /// A number below `limit`, which is 256 at most.
    std::size_t below(std::size_t limit) { return byte() % limit; }
    /// So many, or what there is.
    Input bytes(std::size_t count)
    {
        const Input taken = left_.first(std::min(count, left_.size()));
        left_ = left_.subspan(taken.size());
        return taken;
    }
    Input rest() { return bytes(left_.size()); }

private:
    Input left_;
};

} // namespace Fuzz
