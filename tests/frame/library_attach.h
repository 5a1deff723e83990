// The entry point that the system calls for each library. No header declares it.
#pragma once

#include "platform/win32.h"

extern "C" BOOL WINAPI DllMain(HMODULE module, DWORD reason, void* reserved);

namespace Tests {

inline constexpr DWORD kProcessDetach = 0;
inline constexpr DWORD kProcessAttach = 1;
inline constexpr DWORD kThreadAttach = 2;
inline constexpr DWORD kThreadDetach = 3;

} // namespace Tests
