// One change of the registry, and the JSON text that stands for it in the file.
#pragma once

#include <string>
#include <string_view>

#include "platform/windows.h"

namespace Embedded {

struct RegistryChange {
    enum class Kind { createKey, setValue, deleteValue };

    Kind kind = Kind::createKey;
    std::wstring key;
    std::wstring name; // of the value
    DWORD type = REG_NONE;
    std::string data; // UTF-16 little-endian where the type is a text's
};

/// Thrown by what reads the file; it says what is wrong with a line.
struct RegistryDamage {
    std::string reason;
};

inline bool isTextType(DWORD type)
{
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

/// A line of UTF-8 without its end.
std::string jsonOf(const RegistryChange& change);
/// Throws RegistryDamage.
RegistryChange changeFrom(std::string_view json);

} // namespace Embedded
