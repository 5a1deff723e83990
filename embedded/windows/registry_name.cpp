#include "embedded/windows/registry_name.h"

#include <algorithm>

#include "embedded/base/text.h"

namespace Embedded {

std::wstring normalName(const wchar_t* text)
{
    return text == nullptr ? std::wstring() : wideFromUtf16le(utf16leFromWide(text));
}

std::size_t utf16Length(std::wstring_view text)
{
    return utf16leFromWide(text).size() / 2;
}

std::vector<std::wstring_view> pathParts(std::wstring_view path)
{
    std::vector<std::wstring_view> parts;
    while (!path.empty()) {
        const std::size_t length = std::min(path.find(L'\\'), path.size());
        if (length > 0)
            parts.push_back(path.substr(0, length));
        path.remove_prefix(std::min(length + 1, path.size()));
    }
    return parts;
}

} // namespace Embedded
