// What a key handle stands for, and which handles are open.
#pragma once

#include <string>

#include "platform/windows.h"

struct RegistryKeyHandle {
    std::wstring path; // empty: the current user's root
    REGSAM access = KEY_ALL_ACCESS;
};

namespace Embedded {

HKEY openHandle(std::wstring path, REGSAM access);
/// Throws ErrorException unless the handle is open, or predefined, and has these rights.
void requireHandle(HKEY key, REGSAM access = 0);
/// False when it was not open. The predefined one stays open.
bool closeHandle(HKEY key);

} // namespace Embedded
