#include "platform/windows.h"

namespace {

/// Only the letters A to Z have two cases, as in the C locale that a process starts with.
wchar_t folded(wchar_t character)
{
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

} // namespace

int _wcsicmp(const wchar_t* left, const wchar_t* right)
{
    while (*left != L'\0' && folded(*left) == folded(*right)) {
        ++left;
        ++right;
    }
    const wchar_t first = folded(*left);
    const wchar_t second = folded(*right);
    return first < second ? -1 : static_cast<int>(first > second);
}
