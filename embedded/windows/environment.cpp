#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string>

#include "embedded/base/text.h"
#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"

errno_t _wgetenv_s(std::size_t* required, wchar_t* buffer, std::size_t characters, const wchar_t* name)
{
    if (required == nullptr)
        return EINVAL;
    *required = 0;
    if ((buffer == nullptr) != (characters == 0))
        return EINVAL;
    if (buffer != nullptr)
        buffer[0] = L'\0';
    if (name == nullptr)
        return EINVAL;
    if (const auto fault = Embedded::FaultInjection::injectedFailure("_wgetenv_s", ENOMEM))
        return *fault;
    const char* const value = std::getenv(Embedded::utf8FromWide(name).c_str());
    if (value == nullptr)
        return 0;
    const std::wstring wide = Embedded::wideFromUtf8(value);
    *required = wide.size() + 1;
    if (buffer == nullptr)
        return 0;
    if (*required > characters)
        return ERANGE;
    std::copy_n(wide.c_str(), *required, buffer);
    return 0;
}
