// What the threads of the process hold: their stacks, registers and the slots of TlsAlloc.
#pragma once

#include <cstddef>

namespace GuardedHeap {

class MemoryVisitor {
public:
    virtual void visit(const void* from, std::size_t bytes) = 0;

protected:
    ~MemoryVisitor() = default;
};

/// Of this thread: its stack from `stackStart` on; what is below belongs to the caller.
void visitThisThread(MemoryVisitor& visitor, const void* stackStart);
/// Each is stopped while it is looked at.
void visitOtherThreads(MemoryVisitor& visitor);

} // namespace GuardedHeap
