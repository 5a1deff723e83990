// Compares the module's packing with the plain one, over every input of a kind or over every n-th of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Tests {

/// The result of a sweep.
struct SweepResult {
    std::uint64_t inputs = 0;
    std::uint64_t calls = 0;       // of the module
    std::string disagreement = {}; // the first one, which ends the sweep; empty when all agree
};

/// Unpacks every input of exactly `length` bytes into outputs of every capacity from 0 to `mostCapacity`.
SweepResult sweepUnpacking(std::size_t length, std::size_t mostCapacity, std::uint64_t stride = 1);

/// Packs every string of exactly `length` bytes over `symbols` symbols into outputs of every capacity up to the needed
/// one, and unpacks the result.
SweepResult sweepPacking(std::size_t length, std::size_t symbols, std::uint64_t stride = 1);

/// Packs and unpacks a run or a literal of every length up to `longest` followed by another of every length. The second
/// begins with the byte that ends the first, or with another.
SweepResult sweepAlternations(std::size_t longest, std::uint64_t stride = 1);

} // namespace Tests
