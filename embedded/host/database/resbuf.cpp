#include "platform/host/resbuf.h"

#include <cstdarg>
#include <cstring>
#include <new>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/injected_fault.h"
#include "embedded/host/database/resbuf_chain.h"
#include "platform/host/memory.h"

namespace QeHost {
namespace {

/// A va_list by reference, which a bare one cannot portably be.
struct Arguments {
    va_list list;
};

std::optional<Embedded::ResbufValue> stringArgument(int code, const wchar_t* text)
{
    if (text == nullptr)
        return std::nullopt;
    return Embedded::ResbufValue{code, std::wstring(text)};
}

std::optional<Embedded::ResbufValue> chunkArgument(int code, const QeBinaryChunk* chunk)
{
    if (chunk == nullptr)
        return std::nullopt;
    resbuf item{};
    item.restype = static_cast<short>(code);
    item.resval.rbinary = *chunk;
    return valueOf(item);
}

std::optional<Embedded::ResbufValue> takeValue(int code, Arguments& arguments)
{
    switch (qeutValueKind(code)) {
    case QeRb::ValueKind::string:
        return stringArgument(code, va_arg(arguments.list, const wchar_t*));
    case QeRb::ValueKind::binary:
        return chunkArgument(code, va_arg(arguments.list, const QeBinaryChunk*));
    case QeRb::ValueKind::real:
        return Embedded::ResbufValue{code, va_arg(arguments.list, double)};
    case QeRb::ValueKind::integer16:
    case QeRb::ValueKind::integer32:
        return Embedded::ResbufValue{code, std::int32_t{va_arg(arguments.list, int)}};
    case QeRb::ValueKind::none:
        break;
    }
    return std::nullopt;
}

bool appendAll(ChainBuilder& chain, int code, Arguments& arguments)
{
    while (code != QeRb::kListEnd) {
        const std::optional<Embedded::ResbufValue> value = takeValue(code, arguments);
        if (!value || !chain.append(*value))
            return false;
        code = va_arg(arguments.list, int);
    }
    return true;
}

void releaseValue(resbuf& item)
{
    const QeRb::ValueKind kind = qeutValueKind(item.restype);
    if (kind == QeRb::ValueKind::string)
        qeapp_free(item.resval.rstring);
    else if (kind == QeRb::ValueKind::binary)
        qeapp_free(item.resval.rbinary.buf);
}

} // namespace
} // namespace QeHost

QeRb::ValueKind qeutValueKind(int groupCode)
{
    if (groupCode >= QeRb::kText && groupCode < QeRb::kText + 10)
        return QeRb::ValueKind::string;
    if (groupCode >= QeRb::kBinaryChunk && groupCode < QeRb::kBinaryChunk + 10)
        return QeRb::ValueKind::binary;
    switch (groupCode) {
    case QeRb::kXdataString:
    case QeRb::kXdataAppName:
    case QeRb::kXdataControl:
        return QeRb::ValueKind::string;
    case QeRb::kXdataBinaryChunk:
        return QeRb::ValueKind::binary;
    case QeRb::kXdataReal:
        return QeRb::ValueKind::real;
    case QeRb::kXdataInteger16:
        return QeRb::ValueKind::integer16;
    case QeRb::kXdataInteger32:
        return QeRb::ValueKind::integer32;
    default:
        return QeRb::ValueKind::none;
    }
}

resbuf* qeutNewRb(int groupCode)
{
    if (QeHost::isFaultInjected("qeutNewRb") || qeutValueKind(groupCode) == QeRb::ValueKind::none)
        return nullptr;
    auto* item = new (std::nothrow) resbuf;
    if (item == nullptr)
        return nullptr;
    std::memset(item, 0, sizeof *item); // initialising the union would leave the longest member's tail as it was
    item->restype = static_cast<short>(groupCode);
    Embedded::ResourceCounters::add(Embedded::ResourceKind::resbuf);
    return item;
}

resbuf* qeutBuildList(int groupCode, ...)
{
    if (QeHost::isFaultInjected("qeutBuildList"))
        return nullptr;
    QeHost::ChainBuilder chain;
    QeHost::Arguments arguments;
    va_start(arguments.list, groupCode);
    const bool complete = QeHost::appendAll(chain, groupCode, arguments);
    va_end(arguments.list);
    return complete ? chain.release() : nullptr;
}

resbuf* qeutCopyRb(const resbuf* chain)
{
    if (QeHost::isFaultInjected("qeutCopyRb"))
        return nullptr;
    const std::optional<Embedded::ResbufValues> values = QeHost::valuesOf(chain);
    QeHost::ChainBuilder copy;
    return values && copy.append(*values) ? copy.release() : nullptr;
}

void qeutRelRb(resbuf* chain)
{
    while (chain != nullptr) {
        resbuf* next = chain->rbnext;
        QeHost::releaseValue(*chain);
        delete chain;
        Embedded::ResourceCounters::remove(Embedded::ResourceKind::resbuf);
        chain = next;
    }
}
