// How far a batch is, how fast it goes, and how long it will take.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace Orvelcs {

/// "[3/10]", and once the batch has run for two seconds "[300/3000] 41/s, 1 min 6 s left". `position` is the element in
/// hand, from 1.
std::string progressText(std::size_t position, std::size_t total, std::chrono::milliseconds elapsed);

} // namespace Orvelcs
