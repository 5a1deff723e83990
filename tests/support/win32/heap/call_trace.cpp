#include "support/win32/heap/call_trace.h"

#include <windows.h>

#include <cstdint>

namespace GuardedHeap {
namespace {

constexpr std::uint32_t kNothingAbove = ~std::uint32_t{0};

// The system's unwinder takes microseconds a frame. But from one and the same return address to the next one up the
// stack it is always equally far (a function with a stack frame of changing size would spoil its own trace, no more),
// so each distance is asked for once.
class FrameSizes {
public:
    /// Zero when it is not known yet.
    std::uint32_t after(const void* returnAddress) const
    {
        const Entry& entry = entries_[slotOf(returnAddress)];
        if (entry.returnAddress == nullptr && used_ >= kMost)
            return kNothingAbove; // the traces stay short where the table has no room
        return entry.size;
    }

    void learn(const void* returnAddress, std::uint32_t size)
    {
        Entry& entry = entries_[slotOf(returnAddress)];
        if (entry.returnAddress == nullptr && used_ >= kMost)
            return;
        used_ += entry.returnAddress == nullptr ? 1 : 0;
        entry = {returnAddress, size};
    }

    void clear()
    {
        for (Entry& entry : entries_)
            entry = {};
        used_ = 0;
    }

private:
    struct Entry {
        const void* returnAddress;
        std::uint32_t size;
    };
    static constexpr std::size_t kCapacity = std::size_t{1} << 16;
    static constexpr std::size_t kMost = kCapacity / 4 * 3;

    /// Of the address, or the free one where it belongs.
    std::size_t slotOf(const void* returnAddress) const
    {
        const auto mixed = reinterpret_cast<std::uintptr_t>(returnAddress) * 0x9E3779B97F4A7C15u;
        std::size_t slot = mixed >> 48;
        while (entries_[slot].returnAddress != nullptr && entries_[slot].returnAddress != returnAddress)
            slot = (slot + 1) % kCapacity;
        return slot;
    }

    std::array<Entry, kCapacity> entries_;
    std::size_t used_;
};

constinit FrameSizes frameSizes{};

std::uintptr_t endOfStack()
{
    return reinterpret_cast<std::uintptr_t>(reinterpret_cast<NT_TIB*>(NtCurrentTeb())->StackBase);
}

bool stepUp(CONTEXT& context)
{
    DWORD64 image = 0;
    PRUNTIME_FUNCTION const function = RtlLookupFunctionEntry(context.Rip, &image, nullptr);
    // Only a function that calls nothing may have no entry, and all of these do call: here the stack cannot be read on.
    if (function == nullptr)
        return false;
    void* handlerData = nullptr;
    DWORD64 frame = 0;
    RtlVirtualUnwind(UNW_FLAG_NHANDLER, image, context.Rip, function, &context, &handlerData, &frame, nullptr);
    return true;
}

/// Learns the sizes of the frames above the call.
[[gnu::noinline]] void learnFrames(const CallSite& site)
{
    CONTEXT context;
    RtlCaptureContext(&context);
    const auto start = reinterpret_cast<std::uintptr_t>(site.callersStack);
    while (context.Rsp < start)
        if (!stepUp(context) || context.Rip == 0)
            return;
    for (std::size_t depth = 0; depth + 1 < kTraceDepth; ++depth) {
        const auto returnAddress = reinterpret_cast<const void*>(context.Rip);
        const std::uintptr_t before = context.Rsp;
        if (!stepUp(context) || context.Rip == 0 || context.Rsp <= before || context.Rsp > endOfStack()) {
            frameSizes.learn(returnAddress, kNothingAbove);
            return;
        }
        frameSizes.learn(returnAddress, static_cast<std::uint32_t>(context.Rsp - before));
    }
}

/// Whether the trace went as far as the stack or the trace's own length allow.
bool follow(const CallSite& site, CallTrace& trace)
{
    const std::uintptr_t end = endOfStack();
    auto stack = reinterpret_cast<std::uintptr_t>(site.callersStack);
    trace[0] = site.returnAddress;
    for (std::size_t depth = 1; depth < kTraceDepth; ++depth) {
        const std::uint32_t size = frameSizes.after(trace[depth - 1]);
        if (size == 0)
            return false;
        stack += size;
        if (stack > end)
            return true;
        trace[depth] = *reinterpret_cast<const void* const*>(stack - sizeof(void*));
        if (trace[depth] == nullptr)
            return true;
    }
    return true;
}

} // namespace

CallTrace traceFrom(const CallSite& site)
{
    CallTrace trace{};
    if (!follow(site, trace)) {
        learnFrames(site);
        static_cast<void>(follow(site, trace)); // what is unknown even now stays out of the trace
    }
    return trace;
}

void forgetFrameSizes()
{
    frameSizes.clear();
}

} // namespace GuardedHeap
