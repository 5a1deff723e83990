// What the program was about when a block was allocated: in a test program, which test.
#pragma once

#include <cstdint>
#include <string_view>

namespace GuardedHeap {

/// From now on blocks belong to the phase of this name; the text is copied.
void enterPhase(std::string_view name);
std::uint32_t currentPhase();
/// Of phase 0, the time before the first: "no test".
std::string_view phaseName(std::uint32_t phase);

} // namespace GuardedHeap
