// The console, which the program shares with the one that started it.
#pragma once

#include <windows.h>

#include <array>

namespace Orvelcs {

/// For as long as it lives, the console takes UTF-8 and, where it can, escape sequences. Without a console it does
/// nothing.
class ConsoleSettings {
public:
    ConsoleSettings();
    ConsoleSettings(const ConsoleSettings&) = delete;
    ConsoleSettings& operator=(const ConsoleSettings&) = delete;
    ~ConsoleSettings();

private:
    struct Mode {
        HANDLE console = nullptr; // null where the stream is no console
        DWORD before = 0;
    };

    static Mode enableEscapes(DWORD stream);

    UINT codePage_;
    std::array<Mode, 2> modes_;
};

} // namespace Orvelcs
