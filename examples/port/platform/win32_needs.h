#pragma once

// All that the stand-ins of the Win32 calls take of the product. A copy fills these functions from its own SDK.
#include "core/text.h"
#include "core/trial.h"

#include <cstdlib>
#include <string>
#include <string_view>

namespace Win32 {

/// An unpaired surrogate becomes U+FFFD.
inline std::string toUtf8(std::wstring_view wide)
{
    return Core::toUtf8(wide);
}

/// Whatever is not UTF-8 becomes U+FFFD.
inline std::wstring toWide(std::string_view utf8)
{
    return Core::toWide(utf8);
}

/// The user's local application data. Empty when it is not known.
inline std::wstring userFolder()
{
    const char* const folder = std::getenv("IMAGINARY_USER_FOLDER");
    return folder ? Core::toWide(std::string_view(folder)) : std::wstring();
}

/// Whether the SDK's test mode wants the call to fail now. An SDK without one answers false.
inline bool failsNow(const char* call = __builtin_FUNCTION())
{
    return Core::failsNow(call);
}

/// Tells the SDK's test mode of registry keys that are opened and closed. An SDK without one does nothing.
inline void countRegistryKeys(int change)
{
    Core::Living::count("registry keys", change);
}

} // namespace Win32
