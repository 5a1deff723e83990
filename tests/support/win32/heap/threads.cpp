#include "support/win32/heap/threads.h"

#include <windows.h>

#include <tlhelp32.h>
#include <winternl.h>

#include <cstdint>

namespace GuardedHeap {
namespace {

// As the system answers it; the toolchain's headers do not have it.
struct ThreadInformation {
    NTSTATUS exitStatus;
    const TEB* environment;
    void* processAndThread[2];
    std::uintptr_t rest[2];
};

constexpr auto kBasicInformation = static_cast<THREADINFOCLASS>(0);

class OpenedThread {
public:
    explicit OpenedThread(DWORD thread)
        : handle_(OpenThread(THREAD_SUSPEND_RESUME | THREAD_GET_CONTEXT | THREAD_QUERY_INFORMATION, FALSE, thread))
    {
    }
    OpenedThread(const OpenedThread&) = delete;
    OpenedThread& operator=(const OpenedThread&) = delete;
    ~OpenedThread()
    {
        if (handle_ != nullptr)
            static_cast<void>(CloseHandle(handle_)); // it was opened above
    }
    HANDLE get() const { return handle_; }

private:
    HANDLE handle_;
};

void visitStack(MemoryVisitor& visitor, const TEB* environment, const void* stackStart)
{
    const auto* const end = static_cast<const std::byte*>(reinterpret_cast<const NT_TIB*>(environment)->StackBase);
    const auto* const start = static_cast<const std::byte*>(stackStart);
    if (start < end)
        visitor.visit(start, static_cast<std::size_t>(end - start));
    // The slots of TlsAlloc lie there; what does not fit there lies in the process's own heap.
    visitor.visit(environment, sizeof *environment);
}

void visitStopped(MemoryVisitor& visitor, HANDLE thread)
{
    CONTEXT registers{};
    registers.ContextFlags = CONTEXT_FULL;
    ThreadInformation information{};
    if (GetThreadContext(thread, &registers) == 0 ||
        !NT_SUCCESS(NtQueryInformationThread(thread, kBasicInformation, &information, sizeof information, nullptr)))
        return;
    visitor.visit(&registers, sizeof registers);
    visitStack(visitor, information.environment, reinterpret_cast<const void*>(registers.Rsp));
}

void visitThread(MemoryVisitor& visitor, DWORD id)
{
    const OpenedThread thread(id);
    // One that has ended since holds nothing.
    if (thread.get() == nullptr || SuspendThread(thread.get()) == static_cast<DWORD>(-1))
        return;
    visitStopped(visitor, thread.get());
    static_cast<void>(ResumeThread(thread.get())); // it was stopped above
}

} // namespace

void visitThisThread(MemoryVisitor& visitor, const void* stackStart)
{
    visitStack(visitor, NtCurrentTeb(), stackStart);
}

void visitOtherThreads(MemoryVisitor& visitor)
{
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    if (all == INVALID_HANDLE_VALUE)
        return;
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(all, &entry); more != 0; more = Thread32Next(all, &entry))
        if (entry.th32OwnerProcessID == GetCurrentProcessId() && entry.th32ThreadID != GetCurrentThreadId())
            visitThread(visitor, entry.th32ThreadID);
    static_cast<void>(CloseHandle(all)); // it was opened above
}

} // namespace GuardedHeap
