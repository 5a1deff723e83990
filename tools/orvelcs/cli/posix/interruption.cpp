#include "orvelcs/cli/interruption.h"

#include <array>
#include <csignal>

namespace Orvelcs {
namespace {

constexpr std::array<int, 2> kSignals = {SIGINT, SIGTERM};

volatile std::sig_atomic_t interruptionHasCome = 0;
std::array<struct sigaction, kSignals.size()> actionsBefore{};

void restoreActions()
{
    for (std::size_t index = 0; index < kSignals.size(); ++index)
        static_cast<void>(::sigaction(kSignals[index], &actionsBefore[index], nullptr)); // cannot fail for these
}

void noteInterruption(int /*signal*/)
{
    interruptionHasCome = 1;
    restoreActions(); // so that the next one, of either signal, ends the program
}

} // namespace

DeferredInterruption::DeferredInterruption()
{
    interruptionHasCome = 0;
    struct sigaction action {};
    action.sa_handler = noteInterruption;
    action.sa_flags = SA_RESTART;
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        static_cast<void>(::sigaction(kSignals[index], nullptr, &actionsBefore[index])); // cannot fail for these
        if (actionsBefore[index].sa_handler != SIG_IGN)
            static_cast<void>(::sigaction(kSignals[index], &action, nullptr));
    }
}

DeferredInterruption::~DeferredInterruption()
{
    restoreActions();
}

bool isInterrupted()
{
    return interruptionHasCome != 0;
}

} // namespace Orvelcs
