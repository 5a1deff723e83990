// Ctrl-C, and the system's request to end.
#pragma once

namespace Orvelcs {

/// While it lives, the first interruption does not end the program, which finishes what it has in hand and asks
/// `isInterrupted`. The second one ends the program at once. A signal that the caller made the program ignore stays
/// ignored.
class DeferredInterruption {
public:
    DeferredInterruption();
    DeferredInterruption(const DeferredInterruption&) = delete;
    DeferredInterruption& operator=(const DeferredInterruption&) = delete;
    ~DeferredInterruption();
};

/// Returns whether an interruption has come since the DeferredInterruption was made.
bool isInterrupted();

} // namespace Orvelcs
