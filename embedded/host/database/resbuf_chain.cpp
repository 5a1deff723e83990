#include "embedded/host/database/resbuf_chain.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "platform/host/memory.h"

namespace QeHost {
namespace {

using Bytes = std::vector<unsigned char>;

bool putString(resbuf& item, const std::wstring& text)
{
    const std::size_t characters = text.size() + 1;
    item.resval.rstring = static_cast<wchar_t*>(qeapp_malloc(characters * sizeof(wchar_t)));
    if (item.resval.rstring == nullptr)
        return false;
    std::copy_n(text.c_str(), characters, item.resval.rstring);
    return true;
}

bool putBytes(resbuf& item, const Bytes& bytes)
{
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<short>::max()))
        return false;
    item.resval.rbinary.buf = static_cast<char*>(qeapp_malloc(bytes.size()));
    if (item.resval.rbinary.buf == nullptr)
        return false;
    item.resval.rbinary.clen = static_cast<short>(bytes.size());
    if (!bytes.empty())
        std::memcpy(item.resval.rbinary.buf, bytes.data(), bytes.size());
    return true;
}

bool putInteger16(resbuf& item, std::int32_t number)
{
    if (number < std::numeric_limits<short>::min() || number > std::numeric_limits<short>::max())
        return false;
    item.resval.rint = static_cast<short>(number);
    return true;
}

bool put(resbuf& item, const Embedded::ResbufValue& value)
{
    switch (qeutValueKind(value.code)) {
    case QeRb::ValueKind::string:
        return putString(item, std::get<std::wstring>(value.value));
    case QeRb::ValueKind::binary:
        return putBytes(item, std::get<Bytes>(value.value));
    case QeRb::ValueKind::real:
        item.resval.rreal = std::get<double>(value.value);
        return true;
    case QeRb::ValueKind::integer16:
        return putInteger16(item, std::get<std::int32_t>(value.value));
    case QeRb::ValueKind::integer32:
        item.resval.rlong = std::get<std::int32_t>(value.value);
        return true;
    case QeRb::ValueKind::none:
        break;
    }
    return false;
}

std::optional<Bytes> bytesOf(const QeBinaryChunk& chunk)
{
    if (chunk.clen < 0 || (chunk.clen > 0 && chunk.buf == nullptr))
        return std::nullopt;
    return Bytes(chunk.buf, chunk.buf + chunk.clen);
}

} // namespace

bool ChainBuilder::append(const Embedded::ResbufValue& value)
{
    std::unique_ptr<resbuf, Release> item(qeutNewRb(value.code));
    if (item == nullptr || !put(*item, value))
        return false;
    resbuf* added = item.release();
    if (last_ == nullptr)
        first_.reset(added);
    else
        last_->rbnext = added;
    last_ = added;
    return true;
}

bool ChainBuilder::append(const Embedded::ResbufValues& values)
{
    return std::all_of(values.begin(), values.end(), [this](const auto& value) { return append(value); });
}

resbuf* ChainBuilder::release()
{
    last_ = nullptr;
    return first_.release();
}

std::optional<Embedded::ResbufValue> valueOf(const resbuf& item)
{
    const int code = item.restype;
    switch (qeutValueKind(code)) {
    case QeRb::ValueKind::string:
        return Embedded::ResbufValue{code, std::wstring(item.resval.rstring != nullptr ? item.resval.rstring : L"")};
    case QeRb::ValueKind::binary:
        if (std::optional<Bytes> bytes = bytesOf(item.resval.rbinary))
            return Embedded::ResbufValue{code, std::move(*bytes)};
        return std::nullopt;
    case QeRb::ValueKind::real:
        return Embedded::ResbufValue{code, item.resval.rreal};
    case QeRb::ValueKind::integer16:
        return Embedded::ResbufValue{code, std::int32_t{item.resval.rint}};
    case QeRb::ValueKind::integer32:
        return Embedded::ResbufValue{code, item.resval.rlong};
    case QeRb::ValueKind::none:
        break;
    }
    return std::nullopt;
}

std::optional<Embedded::ResbufValues> valuesOf(const resbuf* chain)
{
    Embedded::ResbufValues values;
    for (; chain != nullptr; chain = chain->rbnext) {
        std::optional<Embedded::ResbufValue> value = valueOf(*chain);
        if (!value)
            return std::nullopt;
        values.push_back(std::move(*value));
    }
    return values;
}

} // namespace QeHost
