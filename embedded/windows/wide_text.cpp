#include <limits>

#include "platform/windows.h"

namespace {

/// Only the letters A to Z have two cases, as in the C locale that a process starts with.
wchar_t lowerCased(wchar_t character)
{
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

} // namespace

int _wcsicmp(const wchar_t* left, const wchar_t* right)
{
    return _wcsnicmp(left, right, std::numeric_limits<std::size_t>::max());
}

int _wcsnicmp(const wchar_t* left, const wchar_t* right, std::size_t count)
{
    for (; count > 0; --count, ++left, ++right) {
        const wchar_t first = lowerCased(*left);
        const wchar_t second = lowerCased(*right);
        if (first != second)
            return first < second ? -1 : 1;
        if (first == L'\0')
            break;
    }
    return 0;
}
