#include "embedded/host/drawing_file/stored_resbuf.h"

#include <bit>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "platform/host/resbuf.h"

namespace Embedded {
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

std::optional<ResbufValue> realFromStored(int code, const StoredValue& value)
{
    if (const auto* real = std::get_if<double>(&value))
        return ResbufValue{code, *real};
    const auto* stored = std::get_if<StoredText>(&value);
    if (stored == nullptr || !stored->isBlob || stored->bytes.size() != sizeof(double))
        return std::nullopt;
    std::uint64_t bits = 0;
    for (std::size_t byte = 0; byte < sizeof bits; ++byte)
        bits |= std::uint64_t{static_cast<unsigned char>(stored->bytes[byte])} << 8 * byte;
    const auto real = std::bit_cast<double>(bits);
    return isPlain(real) ? std::nullopt : std::optional(ResbufValue{code, real});
}

template <class Integer>
std::optional<ResbufValue> integerFromStored(int code, const StoredValue& value)
{
    const auto* integer = std::get_if<std::int64_t>(&value);
    if (integer == nullptr || !std::in_range<Integer>(*integer))
        return std::nullopt;
    return ResbufValue{code, static_cast<std::int32_t>(*integer)};
}

std::optional<ResbufValue> textFromStored(int code, const StoredValue& value)
{
    const auto* stored = std::get_if<StoredText>(&value);
    auto text = stored != nullptr ? wideFromStored(stored->bytes, stored->isBlob) : std::nullopt;
    return text ? std::optional(ResbufValue{code, std::move(*text)}) : std::nullopt;
}

std::optional<ResbufValue> bytesFromStored(int code, const StoredValue& value)
{
    const auto* stored = std::get_if<StoredText>(&value);
    if (stored == nullptr || !stored->isBlob || stored->bytes.size() > kLongestChunk)
        return std::nullopt;
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

std::optional<ResbufValue> resbufFromStored(std::int64_t code, const StoredValue& value)
{
    if (!std::in_range<short>(code))
        return std::nullopt;
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
    return std::nullopt;
}

} // namespace Embedded
