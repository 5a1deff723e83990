// The project's binaries reach the C runtime through tables of addresses in each of them. Whoever writes other
// addresses there stands between them and the runtime.
#pragma once

#include <cstddef>
#include <span>

namespace GuardedHeap {

struct Replacement {
    const char* name; // as msvcrt.dll exports it
    void* function;
};

/// Leads the project's binaries, those loaded now and those that will be, to the replacements. Libraries are met when
/// they are loaded, before any code of theirs has run.
void replaceRuntimeFunctions(std::span<const Replacement> replacements);

} // namespace GuardedHeap
