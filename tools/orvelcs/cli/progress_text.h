// How far a batch is, how fast it goes, and how long it will take.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace Orvelcs {

/// "[3/10]", and once the batch has run for two seconds "[300/3000] 41/s, 1 min 6 s left". `position` is the element in
/// hand, from 1.
std::string progressText(std::size_t position, std::size_t total, std::chrono::milliseconds elapsed);

/// How much of a stream was read; 0 bytes in all where its length is not known.
struct StreamPosition {
    std::uintmax_t bytes = 0;
    std::uintmax_t bytesInAll = 0;
};

/// "[45 %] 1200000 points" and, once two seconds have passed, "[45 %] 1200000 points, 600000/s, 3 s left".
std::string progressText(std::size_t points, const StreamPosition& position, std::chrono::milliseconds elapsed);

} // namespace Orvelcs
