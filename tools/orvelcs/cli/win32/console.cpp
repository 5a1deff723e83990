#include "orvelcs/cli/win32/console.h"

namespace Orvelcs {

ConsoleSettings::ConsoleSettings()
    : codePage_(GetConsoleOutputCP()), modes_{enableEscapes(STD_OUTPUT_HANDLE), enableEscapes(STD_ERROR_HANDLE)}
{
    if (codePage_ != 0)
        static_cast<void>(SetConsoleOutputCP(CP_UTF8)); // a failure makes letters beyond ASCII look wrong
}

// The console outlives the program. Nothing can be done about settings that it does not take back.
ConsoleSettings::~ConsoleSettings()
{
    for (auto mode = modes_.rbegin(); mode != modes_.rend(); ++mode)
        if (mode->console != nullptr)
            static_cast<void>(SetConsoleMode(mode->console, mode->before));
    if (codePage_ != 0)
        static_cast<void>(SetConsoleOutputCP(codePage_));
}

ConsoleSettings::Mode ConsoleSettings::enableEscapes(DWORD stream)
{
    Mode mode{GetStdHandle(stream), 0};
    if (GetConsoleMode(mode.console, &mode.before) == 0)
        return {};
    constexpr DWORD kEscapes = ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING;
    static_cast<void>(SetConsoleMode(mode.console, mode.before | kEscapes)); // an old console does not take them
    return mode;
}

} // namespace Orvelcs
