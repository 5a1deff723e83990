// The measured operations: those that process a whole configuration.
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
    /// Divides the number of items, for operations that make a system call for each item.
    std::size_t fewerItems;
    /// True when the caller holds the whole configuration text in memory while the operation runs.
    bool takesText;
    Step prepare;   // runs once; does nothing after an operation on the same store
    Step renew;     // runs before each run
    Step run;       // the measured step
    Test succeeded; // checks each run
    /// The peak memory that a run may use, as a multiple of the text's bytes.
    double maximumMemory = 3;
};

[[nodiscard]] std::span<const Operation> operations();

/// The peak memory of the last run, as a multiple of the text's bytes: the caller's text if it has one, the stored
/// text, and everything that is allocated meanwhile. Requires resetPeak() before the run.
[[nodiscard]] double peakPerText(const Operation& operation, const ConfigurationScene& scene);

} // namespace Bench
