#include "conversions.h"

#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace {

bool holdsText(int groupCode)
{
    return groupCode == QeRb::kText || (groupCode >= QeRb::kXdataString && groupCode <= QeRb::kXdataControl);
}

void* newBlock(std::size_t lengthInBytes)
{
    void* const block = Core::failsNow() ? nullptr : std::calloc(std::max<std::size_t>(lengthInBytes, 1), 1);
    if (block)
        Core::Living::count("blocks", 1);
    return block;
}

void deleteBlock(void* block)
{
    if (block)
        Core::Living::count("blocks", -1);
    std::free(block);
}

wchar_t* copyText(const wchar_t* text)
{
    const std::size_t lengthInBytes = (std::wcslen(text) + 1) * sizeof(wchar_t);
    void* const block = newBlock(lengthInBytes);
    return block ? static_cast<wchar_t*>(std::memcpy(block, text, lengthInBytes)) : nullptr;
}

bool fill(resbuf& buffer, const Draft::Value& value)
{
    if (const auto* number = std::get_if<std::int32_t>(&value.content)) {
        buffer.resval.rlong = *number;
        return true;
    }
    if (const auto* text = std::get_if<Draft::Text>(&value.content)) {
        buffer.resval.rstring = copyText(Core::toWide(*text).c_str());
        return buffer.resval.rstring != nullptr;
    }
    const auto& bytes = std::get<Draft::Bytes>(value.content);
    void* const block = newBlock(bytes.size());
    if (!block)
        return false;
    std::copy(bytes.begin(), bytes.end(), static_cast<std::uint8_t*>(block));
    buffer.resval.rbinary = {static_cast<short>(bytes.size()), static_cast<char*>(block)};
    return true;
}

} // namespace

namespace Platform {

Draft::Outcome toValues(const resbuf* chain, Draft::Values& values)
{
    for (; chain; chain = chain->rbnext) {
        Draft::Value value{chain->restype, {}};
        if (chain->restype == QeRb::kXdataInteger32) {
            value.content = chain->resval.rlong;
        } else if (holdsText(chain->restype)) {
            value.content = toText(chain->resval.rstring);
        } else if (chain->restype == QeRb::kBinaryChunk) {
            const QeBinaryChunk& chunk = chain->resval.rbinary;
            value.content = Draft::Bytes(chunk.buf, chunk.buf + chunk.clen);
        } else {
            return Draft::Outcome::badValue;
        }
        values.push_back(std::move(value));
    }
    return Draft::Outcome::done;
}

resbuf* toChain(const Draft::Values& values)
{
    resbuf* first = nullptr;
    resbuf** next = &first;
    for (const Draft::Value& value : values) {
        *next = qeutNewRb(value.tag);
        if (!*next || !fill(**next, value)) {
            qeutRelRb(first);
            return nullptr;
        }
        next = &(*next)->rbnext;
    }
    return first;
}

} // namespace Platform

Qeapp::ErrorStatus qeutNewString(const wchar_t* source, wchar_t*& copy)
{
    copy = source ? copyText(source) : nullptr;
    return copy ? Qeapp::eOk : source ? Qeapp::eOutOfMemory : Qeapp::eInvalidInput;
}

Qeapp::ErrorStatus qeutNewBuffer(unsigned char*& buffer, std::size_t lengthInBytes)
{
    buffer = static_cast<unsigned char*>(newBlock(lengthInBytes));
    return buffer ? Qeapp::eOk : Qeapp::eOutOfMemory;
}

void qeutDelBuffer(wchar_t*& text)
{
    deleteBlock(text);
    text = nullptr;
}

void qeutDelBuffer(unsigned char*& buffer)
{
    deleteBlock(buffer);
    buffer = nullptr;
}

void* qeapp_malloc(std::size_t lengthInBytes)
{
    return newBlock(lengthInBytes);
}

resbuf* qeutNewRb(int groupCode)
{
    auto* const buffer = static_cast<resbuf*>(newBlock(sizeof(resbuf)));
    if (buffer)
        buffer->restype = static_cast<short>(groupCode);
    return buffer;
}

resbuf* qeutBuildList(int groupCode, ...)
{
    Draft::Values values;
    std::va_list arguments;
    va_start(arguments, groupCode);
    for (int code = groupCode; code != QeRb::kListEnd; code = va_arg(arguments, int))
        values.push_back({static_cast<std::int16_t>(code), Platform::toText(va_arg(arguments, const wchar_t*))});
    va_end(arguments);
    return Platform::toChain(values);
}

void qeutRelRb(resbuf* chain)
{
    while (chain) {
        resbuf* const next = chain->rbnext;
        if (holdsText(chain->restype))
            deleteBlock(chain->resval.rstring);
        else if (chain->restype == QeRb::kBinaryChunk)
            deleteBlock(chain->resval.rbinary.buf);
        deleteBlock(chain);
        chain = next;
    }
}
