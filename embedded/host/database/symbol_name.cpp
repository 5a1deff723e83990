#include "embedded/host/database/symbol_name.h"

#include <algorithm>

namespace QeHost {
namespace {

/// Only the letters A to Z have two cases: what counts as the same name in a file must not depend on a locale.
constexpr wchar_t folded(wchar_t character)
{
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

} // namespace

std::wstring foldedName(std::wstring_view name)
{
    std::wstring result(name);
    std::transform(result.begin(), result.end(), result.begin(), folded);
    return result;
}

bool isSameName(std::wstring_view left, std::wstring_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t one, wchar_t other) { return folded(one) == folded(other); });
}

} // namespace QeHost
