#include "orvelcs/cli/text_bytes.h"

#include "embedded/base/text.h"

namespace Orvelcs {

std::string_view withoutByteOrderMark(std::string_view bytes)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    return bytes.starts_with(kByteOrderMark) ? bytes.substr(kByteOrderMark.size()) : bytes;
}

std::optional<std::string> faultOfText(std::string_view utf8)
{
    if (!Embedded::isValidUtf8(utf8))
        return "is not UTF-8";
    if (utf8.find('\0') != std::string_view::npos)
        return "holds a NUL character";
    return std::nullopt;
}

} // namespace Orvelcs
