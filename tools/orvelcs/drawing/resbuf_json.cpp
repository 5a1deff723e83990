#include "orvelcs/drawing/resbuf_json.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include <fmt/format.h>

#include "embedded/base/hex.h"
#include "embedded/base/json/strict_json.h"
#include "orvelcs/cli/failure.h"

namespace Orvelcs {
namespace {

/// A place in the chain, for messages.
struct Place {
    const std::string& subject;
    std::size_t index;

    [[nodiscard]] Failure failure(const std::string& message) const
    {
        return Failure(subject, fmt::format("[{}]: {}", index, message));
    }
};

Json valueAsJson(const resbuf& buffer)
{
    switch (qeutValueKind(buffer.restype)) {
    case QeRb::ValueKind::string:
        return buffer.resval.rstring != nullptr ? Json(Embedded::utf8FromWide(buffer.resval.rstring)) : Json(nullptr);
    case QeRb::ValueKind::real:
        return buffer.resval.rreal;
    case QeRb::ValueKind::integer16:
        return buffer.resval.rint;
    case QeRb::ValueKind::integer32:
        return buffer.resval.rlong;
    default:
        return nullptr;
    }
}

std::string chunkAsHex(const QeBinaryChunk& chunk)
{
    if (chunk.buf == nullptr || chunk.clen <= 0)
        return {};
    return Embedded::hexFromBytes({chunk.buf, static_cast<std::size_t>(chunk.clen)});
}

void setString(resbuf& buffer, const Json& value, const Place& place)
{
    if (!value.is_string())
        throw place.failure("\"value\" must be a string");
    const std::wstring text = Embedded::wideFromUtf8(value.get_ref<const std::string&>());
    const std::size_t length = (text.size() + 1) * sizeof(wchar_t);
    auto* copy = static_cast<wchar_t*>(qeapp_malloc(length));
    if (copy == nullptr)
        throw std::bad_alloc();
    std::memcpy(copy, text.c_str(), length);
    buffer.resval.rstring = copy;
}

void setBinary(resbuf& buffer, const Json& hex, const Place& place)
{
    if (!hex.is_string())
        throw place.failure("\"hex\" must be a string");
    const auto read = Embedded::bytesFromHex(hex.get_ref<const std::string&>());
    if (!read)
        throw place.failure("\"hex\": " + read.error().message);
    const std::string& bytes = *read;
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<short>::max()))
        throw place.failure("\"hex\" holds more than 32767 bytes");
    if (bytes.empty())
        return;
    auto* copy = static_cast<char*>(qeapp_malloc(bytes.size()));
    if (copy == nullptr)
        throw std::bad_alloc();
    std::copy(bytes.begin(), bytes.end(), copy);
    buffer.resval.rbinary = {static_cast<short>(bytes.size()), copy};
}

template <class Integer>
Integer readInteger(const Json& value, const Place& place)
{
    constexpr auto kLeast = std::numeric_limits<Integer>::min();
    constexpr auto kMost = std::numeric_limits<Integer>::max();
    // The parser reads a number beyond the signed 64 bits as an unsigned one.
    const bool fits = value.is_number_integer() &&
                      !(value.is_number_unsigned() && value.get<std::uint64_t>() > kMost) &&
                      value.get<std::int64_t>() >= kLeast && value.get<std::int64_t>() <= kMost;
    if (!fits)
        throw place.failure(fmt::format("\"value\" must be a whole number from {} to {}", kLeast, kMost));
    return value.get<Integer>();
}

void setValue(resbuf& buffer, QeRb::ValueKind kind, const Json& value, const Place& place)
{
    switch (kind) {
    case QeRb::ValueKind::string:
        return setString(buffer, value, place);
    case QeRb::ValueKind::binary:
        return setBinary(buffer, value, place);
    case QeRb::ValueKind::real:
        if (!value.is_number())
            throw place.failure("\"value\" must be a number");
        buffer.resval.rreal = value.get<double>();
        return;
    case QeRb::ValueKind::integer16:
        buffer.resval.rint = readInteger<short>(value, place);
        return;
    default:
        buffer.resval.rlong = readInteger<std::int32_t>(value, place);
    }
}

int readGroupCode(const Json& element, const Place& place)
{
    if (!element.is_object() || !element.contains("code") || !element["code"].is_number_integer())
        throw place.failure("must be an object with a whole number as \"code\"");
    const auto code = element["code"].get<std::int64_t>();
    if (code < 0 || code > std::numeric_limits<short>::max() ||
        qeutValueKind(static_cast<int>(code)) == QeRb::ValueKind::none)
        throw place.failure(fmt::format("{} is not a group code that a drawing stores", element["code"].dump()));
    return static_cast<int>(code);
}

ResbufList resbufFromJson(const Json& element, const Place& place)
{
    const int code = readGroupCode(element, place);
    const QeRb::ValueKind kind = qeutValueKind(code);
    const char* key = kind == QeRb::ValueKind::binary ? "hex" : "value";
    if (element.size() != 2 || !element.contains(key))
        throw place.failure(fmt::format(R"(group code {} takes "code" and "{}", nothing else)", code, key));
    ResbufList buffer(qeutNewRb(code));
    if (!buffer)
        throw std::bad_alloc();
    setValue(*buffer, kind, element[key], place);
    return buffer;
}

} // namespace

Json resbufsAsJson(const resbuf* chain)
{
    Json array = Json::array();
    for (const resbuf* buffer = chain; buffer != nullptr; buffer = buffer->rbnext) {
        if (qeutValueKind(buffer->restype) == QeRb::ValueKind::binary)
            array.push_back({{"code", buffer->restype}, {"hex", chunkAsHex(buffer->resval.rbinary)}});
        else
            array.push_back({{"code", buffer->restype}, {"value", valueAsJson(*buffer)}});
    }
    return array;
}

ResbufList resbufsFromJson(const std::string& subject, std::string_view text)
{
    constexpr std::size_t kMostLevels = 2;
    const auto document = Embedded::parseStrictJson(text, kMostLevels);
    if (!document)
        throw Failure(subject, document.error().text());
    if (!document->is_array())
        throw Failure(subject, R"(must be a JSON array of objects with "code" and "value" or "hex")");
    ResbufList chain;
    resbuf* last = nullptr;
    for (std::size_t index = 0; index < document->size(); ++index) {
        ResbufList next = resbufFromJson((*document)[index], {subject, index});
        resbuf* added = next.release();
        if (last == nullptr)
            chain.reset(added);
        else
            last->rbnext = added;
        last = added;
    }
    return chain;
}

} // namespace Orvelcs
