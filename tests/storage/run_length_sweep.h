// The module's packing against the plain one, over every input of a kind, or over each so-manieth of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Tests {

/// The result of a sweep.
struct SweepResult {
    std::uint64_t inputs = 0;
    std::uint64_t calls = 0;       // of the module
    std::string disagreement = {}; // the first one, after which there was no other input; empty when all agree
};

/// Unpacks every input of exactly `length` bytes into outputs of every capacity from 0 to `mostCapacity`.
SweepResult sweepUnpacking(std::size_t length, std::size_t mostCapacity, std::uint64_t stride = 1);

/// Packs every string of exactly `length` bytes over so many symbols into outputs of every capacity up to what it
/// takes, and unpacks what came of it.
SweepResult sweepPacking(std::size_t length, std::size_t symbols, std::uint64_t stride = 1);

/// Packs, so and back again, a run or a literal of every length up to `longest` followed by another of every length;
/// the second begins with another byte than the first ends with, or with the same.
SweepResult sweepAlternations(std::size_t longest, std::uint64_t stride = 1);

} // namespace Tests
