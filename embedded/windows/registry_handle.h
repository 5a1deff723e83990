// The handles of open keys.
#pragma once

#include <string>

#include "platform/win32.h"

struct RegistryKeyHandle {
    std::wstring path; // empty: the current user's root
    REGSAM access = KEY_ALL_ACCESS;
};

namespace Embedded {

HKEY openHandle(std::wstring path, REGSAM access);
/// Throws ErrorException unless the handle is predefined or open and has these rights.
void requireHandle(HKEY key, REGSAM access = 0);
/// Returns false for a handle that is not open. The predefined one stays open.
bool closeHandle(HKEY key);

} // namespace Embedded
