// How long a command waits for other processes, and what it shows in the meantime.
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

/// Makes a wait for `what`, which another process is changing. It takes as long as --wait says and shows a line on a
/// terminal, which the next output removes. `output` must outlive it.
Embedded::LockWait waitFor(const std::string& what, const Output& output);
/// The message for a wait that ended while another process still held the lock.
std::string lockedMessage();

} // namespace Orvelcs
