#include "support/variables.h"

#include <windows.h>

#include <cstdlib>

#include "embedded/base/text.h"

namespace Tests {

std::optional<std::string> getVariable(const std::string& name)
{
    const wchar_t* const value = _wgetenv(Embedded::wideFromUtf8(name).c_str());
    return value != nullptr ? std::optional<std::string>(Embedded::utf8FromWide(value)) : std::nullopt;
}

void setVariable(const std::string& name, const std::optional<std::string>& value)
{
    const std::wstring wideName = Embedded::wideFromUtf8(name);
    const std::wstring wideValue = Embedded::wideFromUtf8(value.value_or(""));
    static_cast<void>(_wputenv_s(wideName.c_str(), wideValue.c_str())); // an empty value removes the variable
    // The C runtime has no empty variables; the system has.
    if (value && value->empty())
        SetEnvironmentVariableW(wideName.c_str(), L"");
}

} // namespace Tests
