// Who called: a handful of return addresses for every block, cheap enough to be taken at each allocation. `operator
// new` is the caller of nearly all allocations, so one address alone would say nothing.
#pragma once

#include <array>
#include <cstddef>

namespace GuardedHeap {

inline constexpr std::size_t kTraceDepth = 6;
/// The innermost caller first; null where the stack, or what is known of it, ended.
using CallTrace = std::array<const void*, kTraceDepth>;

/// Where a function returns to, and where its caller's part of the stack begins.
struct CallSite {
    const void* returnAddress;
    const void* callersStack;
};

/// The call of the function that this is inlined in.
[[gnu::always_inline]] inline CallSite thisCall()
{
    return {__builtin_return_address(0), __builtin_dwarf_cfa()};
}

[[nodiscard]] CallTrace traceFrom(const CallSite& site);

/// To be called when code is unloaded: other code may come to lie at its addresses.
void forgetFrameSizes();

} // namespace GuardedHeap
