// The end of a process whose heap was misused.
#pragma once

#include <cstddef>
#include <string_view>

#include "support/win32/heap/block.h"
#include "support/win32/heap/report.h"

namespace GuardedHeap {

enum class Damage { overrun, underrun, writeAfterFree, secondFree };

/// `place`: of the first wrong byte, counted from the block's start. `finder`: the call that met it; empty for a check
/// that nobody asked for.
[[noreturn]] void reportDamage(Damage damage, const Block& block, std::ptrdiff_t place, const CallTrace& finder);
/// Of an address that is neither this heap's nor the C runtime's.
[[noreturn]] void reportForeignAddress(std::string_view operation, const void* address, const CallTrace& caller);

/// Where the block was allocated and, when it was, freed.
void describeHistory(Report& report, const Block& block);

} // namespace GuardedHeap
