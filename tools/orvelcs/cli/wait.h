// How long a command waits for other processes, and what it shows meanwhile.
#pragma once

#include <string>

#include <CLI/App.hpp>

#include "embedded/base/lock_wait.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// --wait.
struct WaitOption {
    std::string seconds;
    CLI::Option* option = nullptr;
};

void addWaitOption(CLI::App& program, WaitOption& wait);
/// Sets how long this process waits. Throws Failure for wrong usage.
void applyWaitOption(const WaitOption& wait);

/// A wait for `what`, which another process is changing: as long as --wait says, with a line on a terminal that the
/// next output takes away. `output` must outlive it.
Embedded::LockWait waitFor(const std::string& what, const Output& output);
/// What to say when the wait is over and another process still holds what was waited for.
std::string stillHeldMessage();

} // namespace Orvelcs
