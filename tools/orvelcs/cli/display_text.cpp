#include "orvelcs/cli/display_text.h"

#include <fmt/format.h>
#include <utf8.h>

#include "embedded/base/text.h"

namespace Orvelcs {
namespace {

bool isControl(wchar_t character)
{
    const bool lineEnd = character == L'\x2028' || character == L'\x2029';
    return character < 0x20 || (character >= 0x7F && character <= 0x9F) || lineEnd;
}

std::wstring escaped(wchar_t character)
{
    switch (character) {
    case L'\n':
        return L"\\n";
    case L'\r':
        return L"\\r";
    case L'\t':
        return L"\\t";
    default:
        return Embedded::wideFromUtf8(fmt::format("\\x{:02X}", static_cast<unsigned int>(character)));
    }
}

} // namespace

std::string oneLine(std::wstring_view text)
{
    std::wstring line;
    for (const wchar_t character : text)
        isControl(character) ? line.append(escaped(character)) : line.append(1, character);
    return Embedded::utf8FromWide(line);
}

std::string oneLine(std::string_view utf8)
{
    std::string line;
    while (!utf8.empty()) {
        const auto valid = static_cast<std::size_t>(utf8::find_invalid(utf8.begin(), utf8.end()) - utf8.begin());
        line += oneLine(Embedded::wideFromUtf8(utf8.substr(0, valid)));
        utf8.remove_prefix(valid);
        if (utf8.empty())
            break;
        line += fmt::format("\\x{:02X}", static_cast<unsigned char>(utf8.front()));
        utf8.remove_prefix(1);
    }
    return line;
}

} // namespace Orvelcs
