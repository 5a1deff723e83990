// What is measured: everything that a configuration goes through whole.
#pragma once

#include <cstddef>
#include <span>

#include "configuration_scene.h"

namespace Bench {

struct Operation {
    using Step = void (*)(ConfigurationScene&);
    using Test = bool (*)(const ConfigurationScene&);

    const char* store;
    const char* name;
    /// Where each item is a system call or more, so many times fewer items are measured.
    std::size_t fewerItems;
    /// Whether the caller has the text in memory meanwhile.
    bool takesText;
    Step prepare;   // once; after an operation on the same store it has nothing left to do
    Step renew;     // before each run
    Step run;       // what is measured
    Test succeeded; // after each run
    /// The most memory that a run may have at once, as a multiple of the text's bytes.
    double mostMemory = 3;
};

[[nodiscard]] std::span<const Operation> operations();

/// The most memory that the last run had at once, as a multiple of the text's bytes: the caller's text where it takes
/// one, what is stored, and all that is allocated on the way. To be asked after a run that resetPeak() came before.
[[nodiscard]] double peakPerText(const Operation& operation, const ConfigurationScene& scene);

} // namespace Bench
