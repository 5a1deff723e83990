// Measures work of this project beside the same work of a well-known program or library.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Bench {

/// A piece of work that this project and a peer both do. Each function does all of the work once, and throws
/// std::runtime_error when it fails.
struct Comparison {
    std::string work;
    std::string peer;
    double goal = 1; // how many times as fast as the peer it is meant to be
    std::function<void()> ours;
    std::function<void()> theirs;
};

/// The processor time of both sides in one run, kernel and finished child processes included.
struct Measured {
    double ratio = 0; // the median over all rounds of the peer's time divided by ours
    double ourSeconds = 0;
    double theirSeconds = 0; // medians, of doing the work once
};

/// Measures all of them in turns: each round takes every comparison once, in another order, and begins with either side
/// at random.
std::vector<Measured> measure(const std::vector<Comparison>& comparisons, int rounds);

} // namespace Bench
