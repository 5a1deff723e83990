#include "support/chain.h"

#include <cstring>
#include <cwchar>

#include "embedded/base/text.h"

namespace Tests {
namespace {

void setValue(resbuf& item, const std::wstring& text)
{
    const std::size_t lengthInBytes = (text.size() + 1) * sizeof(wchar_t);
    item.resval.rstring = static_cast<wchar_t*>(qeapp_malloc(lengthInBytes));
    std::memcpy(item.resval.rstring, text.c_str(), lengthInBytes);
}

void setValue(resbuf& item, const Bytes& bytes)
{
    item.resval.rbinary = {.clen = static_cast<short>(bytes.size()), .buf = nullptr};
    if (bytes.empty())
        return;
    item.resval.rbinary.buf = static_cast<char*>(qeapp_malloc(bytes.size()));
    std::memcpy(item.resval.rbinary.buf, bytes.data(), bytes.size());
}

void setValue(resbuf& item, double number)
{
    item.resval.rreal = number;
}

void setValue(resbuf& item, int number)
{
    if (qeutValueKind(item.restype) == QeRb::ValueKind::integer16)
        item.resval.rint = static_cast<short>(number);
    else
        item.resval.rlong = number;
}

Item readItem(const resbuf& item)
{
    switch (qeutValueKind(item.restype)) {
    case QeRb::ValueKind::string:
        return {item.restype, std::wstring(item.resval.rstring != nullptr ? item.resval.rstring : L"")};
    case QeRb::ValueKind::binary: {
        const char* const begin = item.resval.rbinary.buf;
        return {item.restype, begin != nullptr ? Bytes(begin, begin + item.resval.rbinary.clen) : Bytes()};
    }
    case QeRb::ValueKind::real:
        return {item.restype, item.resval.rreal};
    case QeRb::ValueKind::integer16:
        return {item.restype, static_cast<int>(item.resval.rint)};
    case QeRb::ValueKind::integer32:
    case QeRb::ValueKind::none:
        break;
    }
    return {item.restype, static_cast<int>(item.resval.rlong)};
}

struct Printer {
    std::ostream& out;
    void operator()(const std::wstring& text) const { out << '"' << Embedded::utf8FromWide(text) << '"'; }
    void operator()(const Bytes& bytes) const { out << bytes.size() << " bytes"; }
    void operator()(double number) const { out << number; }
    void operator()(int number) const { out << number; }
};

} // namespace

std::ostream& operator<<(std::ostream& out, const Item& item)
{
    out << item.code << ' ';
    std::visit(Printer{out}, item.value);
    return out;
}

Orvel::ResbufChain makeChain(const Items& items)
{
    Orvel::ResbufChain chain;
    resbuf* last = nullptr;
    for (const Item& item : items) {
        resbuf* const next = qeutNewRb(item.code);
        std::visit([&](const auto& value) { setValue(*next, value); }, item.value);
        (last == nullptr ? chain.put() : last->rbnext) = next;
        last = next;
    }
    return chain;
}

Items readChain(const resbuf* chain)
{
    Items items;
    for (; chain != nullptr; chain = chain->rbnext)
        items.push_back(readItem(*chain));
    return items;
}

} // namespace Tests
