// Names of registered applications and blocks, which are compared without regard to case.
#pragma once

#include <string>
#include <string_view>

namespace QeHost {

/// The form in which two names that differ in case alone are equal, and by which tables are ordered.
std::wstring foldedName(std::wstring_view name);
bool isSameName(std::wstring_view left, std::wstring_view right);

} // namespace QeHost
