#include "embedded/host/drawing_file/stored_value.h"

#include <bit>
#include <cmath>
#include <limits>
#include <utility>

#include "embedded/base/surrogates.h"
#include "embedded/base/text.h"
#include "embedded/host/database/host_error.h"
#include "platform/host/resbuf.h"

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
    if (!kWideIsUtf16 || unit < kFirstSupplementary) {
        text += static_cast<wchar_t>(unit);
        return;
    }
    text += static_cast<wchar_t>(highSurrogate(unit));
    text += static_cast<wchar_t>(lowSurrogate(unit));
}

tl::unexpected<Error> notAText()
{
    return failure(Qeapp::eFileDamaged, "is not a text");
}

Expected<std::wstring> wideFromUtf32(std::string_view bytes)
{
    if (bytes.size() % sizeof(char32_t) != 0)
        return notAText();
    std::wstring text;
    for (std::size_t at = 0; at < bytes.size(); at += sizeof(char32_t)) {
        char32_t unit = 0;
        for (std::size_t byte = 0; byte < sizeof(char32_t); ++byte)
            unit |= static_cast<char32_t>(static_cast<unsigned char>(bytes[at + byte])) << 8 * byte;
        if (sizeof(wchar_t) < sizeof(char32_t) && unit > kLastCodePoint)
            return notAText();
        appendUnit(text, unit);
    }
    return text;
}

Expected<std::wstring> wideFromBlob(std::string_view bytes)
{
    if (bytes.starts_with(kUtf32Mark))
        return wideFromUtf32(bytes.substr(kUtf32Mark.size()));
    if (!bytes.starts_with(kUtf16Mark) || bytes.size() % 2 != 0)
        return notAText();
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

Expected<std::wstring> wideFromStored(const StoredValue& value)
{
    const auto* const stored = std::get_if<StoredText>(&value);
    if (stored == nullptr || (!stored->isBlob && !isValidUtf8(stored->bytes)))
        return notAText();
    Expected<std::wstring> text = stored->isBlob ? wideFromBlob(stored->bytes) : wideFromUtf8(stored->bytes);
    if (text && text->find(L'\0') != std::wstring::npos)
        return notAText();
    return text;
}

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t kLongestChunk = std::numeric_limits<short>::max();

/// SQLite has no NaN and no negative zero: these are the eight bytes of their IEEE 754 form, the low one first.
bool isPlain(double real)
{
    return !std::isnan(real) && !(real == 0 && std::signbit(real));
}

StoredValue storedFromReal(double real)
{
    if (isPlain(real))
        return real;
    StoredText bits{.bytes = {}, .isBlob = true};
    for (int shift = 0; shift < 64; shift += 8)
        bits.bytes += static_cast<char>(std::bit_cast<std::uint64_t>(real) >> shift & 0xFF);
    return bits;
}

tl::unexpected<Error> doesNotFit(std::int64_t code)
{
    return failure(Qeapp::eFileDamaged, "holds a value that does not fit the group code " + std::to_string(code));
}

Expected<ResbufValue> realFromStored(int code, const StoredValue& value)
{
    if (const auto* real = std::get_if<double>(&value))
        return ResbufValue{code, *real};
    const auto* stored = std::get_if<StoredText>(&value);
    if (stored == nullptr || !stored->isBlob || stored->bytes.size() != sizeof(double))
        return doesNotFit(code);
    std::uint64_t bits = 0;
    for (std::size_t byte = 0; byte < sizeof bits; ++byte)
        bits |= std::uint64_t{static_cast<unsigned char>(stored->bytes[byte])} << 8 * byte;
    const auto real = std::bit_cast<double>(bits);
    if (isPlain(real))
        return doesNotFit(code);
    return ResbufValue{code, real};
}

template <class Integer>
Expected<ResbufValue> integerFromStored(int code, const StoredValue& value)
{
    const auto* integer = std::get_if<std::int64_t>(&value);
    if (integer == nullptr || !std::in_range<Integer>(*integer))
        return doesNotFit(code);
    return ResbufValue{code, static_cast<std::int32_t>(*integer)};
}

Expected<ResbufValue> textFromStored(int code, const StoredValue& value)
{
    Expected<std::wstring> text = wideFromStored(value);
    if (!text)
        return doesNotFit(code);
    return ResbufValue{code, std::move(*text)};
}

Expected<ResbufValue> bytesFromStored(int code, const StoredValue& value)
{
    const auto* stored = std::get_if<StoredText>(&value);
    if (stored == nullptr || !stored->isBlob || stored->bytes.size() > kLongestChunk)
        return doesNotFit(code);
    return ResbufValue{code, Bytes(stored->bytes.begin(), stored->bytes.end())};
}

} // namespace

StoredValue storedFromResbuf(const ResbufValue& value)
{
    if (const auto* text = std::get_if<std::wstring>(&value.value))
        return storedFromWide(*text);
    if (const auto* bytes = std::get_if<Bytes>(&value.value))
        return StoredText{std::string(bytes->begin(), bytes->end()), true};
    if (const auto* real = std::get_if<double>(&value.value))
        return storedFromReal(*real);
    return std::int64_t{std::get<std::int32_t>(value.value)};
}

Expected<ResbufValue> resbufFromStored(std::int64_t code, const StoredValue& value)
{
    if (!std::in_range<short>(code))
        return doesNotFit(code);
    const int groupCode = static_cast<int>(code);
    switch (qeutValueKind(groupCode)) {
    case QeRb::ValueKind::string:
        return textFromStored(groupCode, value);
    case QeRb::ValueKind::binary:
        return bytesFromStored(groupCode, value);
    case QeRb::ValueKind::real:
        return realFromStored(groupCode, value);
    case QeRb::ValueKind::integer16:
        return integerFromStored<std::int16_t>(groupCode, value);
    case QeRb::ValueKind::integer32:
        return integerFromStored<std::int32_t>(groupCode, value);
    case QeRb::ValueKind::none:
        break;
    }
    return doesNotFit(code);
}

} // namespace Embedded
