#include <limits>

#include "embedded/base/case_folding.h"
#include "platform/win32.h"

int _wcsicmp(const wchar_t* left, const wchar_t* right)
{
    return _wcsnicmp(left, right, std::numeric_limits<std::size_t>::max());
}

/// Like the C locale that a process starts with, it ignores the case of the letters A to Z only.
int _wcsnicmp(const wchar_t* left, const wchar_t* right, std::size_t count)
{
    for (; count > 0; --count, ++left, ++right) {
        const wchar_t first = Embedded::toLowerAscii(*left);
        const wchar_t second = Embedded::toLowerAscii(*right);
        if (first != second)
            return first < second ? -1 : 1;
        if (first == L'\0')
            break;
    }
    return 0;
}
