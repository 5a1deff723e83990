#include "embedded/host/drawing_file/stored_text.h"

#include "embedded/base/text.h"

namespace Embedded {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kUtf16Mark = "\xFF\xFE"sv;
constexpr std::string_view kUtf32Mark = "\xFF\xFE\0\0"sv;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLastCodePoint = 0x10FFFF;

std::string utf32From(std::wstring_view text)
{
    std::string bytes;
    for (const wchar_t character : text) {
        for (int shift = 0; shift < 32; shift += 8)
            bytes += static_cast<char>(static_cast<char32_t>(character) >> shift & 0xFF);
    }
    return bytes;
}

void appendUnit(std::wstring& text, char32_t unit)
{
    if (sizeof(wchar_t) >= sizeof(char32_t) || unit < kFirstSupplementary) {
        text += static_cast<wchar_t>(unit);
        return;
    }
    const char32_t rest = unit - kFirstSupplementary;
    text += static_cast<wchar_t>(0xD800 + (rest >> 10));
    text += static_cast<wchar_t>(0xDC00 + (rest & 0x3FF));
}

std::optional<std::wstring> wideFromUtf32(std::string_view bytes)
{
    if (bytes.size() % sizeof(char32_t) != 0)
        return std::nullopt;
    std::wstring text;
    for (std::size_t at = 0; at < bytes.size(); at += sizeof(char32_t)) {
        char32_t unit = 0;
        for (std::size_t byte = 0; byte < sizeof(char32_t); ++byte)
            unit |= static_cast<char32_t>(static_cast<unsigned char>(bytes[at + byte])) << 8 * byte;
        if (sizeof(wchar_t) < sizeof(char32_t) && unit > kLastCodePoint)
            return std::nullopt;
        appendUnit(text, unit);
    }
    return text;
}

std::optional<std::wstring> wideFromBlob(std::string_view bytes)
{
    if (bytes.starts_with(kUtf32Mark))
        return wideFromUtf32(bytes.substr(kUtf32Mark.size()));
    if (!bytes.starts_with(kUtf16Mark) || bytes.size() % 2 != 0)
        return std::nullopt;
    return wideFromUtf16le(bytes.substr(kUtf16Mark.size()));
}

} // namespace

StoredText storedFromWide(std::wstring_view text)
{
    if (isWellFormed(text))
        return {utf8FromWide(text), false};
    const std::string utf16 = utf16leFromWide(text);
    if (wideFromUtf16le(utf16) == text)
        return {std::string(kUtf16Mark) + utf16, true};
    return {std::string(kUtf32Mark) + utf32From(text), true};
}

std::optional<std::wstring> wideFromStored(std::string_view bytes, bool isBlob)
{
    if (!isBlob && !isValidUtf8(bytes))
        return std::nullopt;
    std::optional<std::wstring> text = isBlob ? wideFromBlob(bytes) : wideFromUtf8(bytes);
    const bool holdsNul = text && text->find(L'\0') != std::wstring::npos;
    return holdsNul ? std::nullopt : text;
}

} // namespace Embedded
