#include "orvelcs/cli/interruption.h"

#include <windows.h>

#include <atomic>

namespace Orvelcs {
namespace {

std::atomic<bool> interruptionHasCome = false;

/// Runs in a thread of its own. What it does not handle goes to the handler before it, which ends the program.
BOOL WINAPI noteInterruption(DWORD event)
{
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        return FALSE;
    return interruptionHasCome.exchange(true) ? FALSE : TRUE;
}

} // namespace

// Without a console there is nothing to handle, and a failure leaves the system's own handler, which ends the program.
DeferredInterruption::DeferredInterruption()
{
    interruptionHasCome = false;
    static_cast<void>(SetConsoleCtrlHandler(noteInterruption, TRUE));
}

DeferredInterruption::~DeferredInterruption()
{
    static_cast<void>(SetConsoleCtrlHandler(noteInterruption, FALSE));
}

bool isInterrupted()
{
    return interruptionHasCome;
}

} // namespace Orvelcs
