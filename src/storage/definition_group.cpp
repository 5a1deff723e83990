#include "storage/definition_group.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <span>
#include <vector>

#include "storage/host_holders.h"
#include "storage/library_holder.h"
#include "storage/packed_definition.h"

namespace Orvel {
namespace {

constexpr std::size_t kLargestChunk = 127;
static_assert(kLongestPackedDefinition <= 32767, "more is not stored in a drawing");

/// A resbuf whose text is the brace alone.
ResbufChain braceResbuf(wchar_t brace)
{
    const std::array<wchar_t, 2> text{brace};
    ResbufChain item(qeutNewRb(QeRb::kXdataControl));
    if (!item)
        return ResbufChain();
    item->resval.rstring = static_cast<wchar_t*>(qeapp_malloc(sizeof text));
    if (item->resval.rstring == nullptr)
        return ResbufChain();
    std::memcpy(item->resval.rstring, text.data(), sizeof text);
    return item;
}

ResbufChain chunkResbuf(std::span<const unsigned char> bytes)
{
    ResbufChain item(qeutNewRb(QeRb::kBinaryChunk));
    if (!item)
        return ResbufChain();
    QeBinaryChunk& chunk = item->resval.rbinary;
    chunk.buf = static_cast<char*>(qeapp_malloc(bytes.size()));
    if (chunk.buf == nullptr)
        return ResbufChain();
    std::memcpy(chunk.buf, bytes.data(), bytes.size());
    chunk.clen = static_cast<short>(bytes.size());
    return item;
}

/// Collects resbufs into one chain and remembers whether all of them could be made.
class ChainBuilder {
public:
    void append(ResbufChain item)
    {
        if (!item) {
            failed_ = true;
            return;
        }
        resbuf*& link = last_ == nullptr ? first_.put() : last_->rbnext;
        last_ = link = item.release();
    }
    resbuf* release() { return failed_ ? nullptr : first_.release(); }

private:
    ResbufChain first_;
    resbuf* last_ = nullptr;
    bool failed_ = false;
};

bool holdsBytes(const resbuf& chunk)
{
    return chunk.resval.rbinary.clen >= 1 && chunk.resval.rbinary.buf != nullptr;
}

std::span<const unsigned char> bytesOf(const resbuf& chunk)
{
    const QeBinaryChunk& binary = chunk.resval.rbinary;
    return {reinterpret_cast<const unsigned char*>(binary.buf), static_cast<std::size_t>(binary.clen)};
}

} // namespace

resbuf* DefinitionToResbufGroup(const Library::DefinitionBase* definition)
{
    std::vector<unsigned char> packed;
    if (!EncodeDefinitionBytes(definition, packed))
        return nullptr;
    ChainBuilder chain;
    chain.append(braceResbuf(L'{'));
    for (std::span<const unsigned char> rest(packed); !rest.empty();) {
        const std::size_t length = std::min(rest.size(), kLargestChunk);
        chain.append(chunkResbuf(rest.first(length)));
        rest = rest.subspan(length);
    }
    chain.append(braceResbuf(L'}'));
    return chain.release();
}

Library::DefinitionBase* ResbufGroupToDefinition(const resbuf* group)
{
    if (group == nullptr || group->restype != QeRb::kXdataControl)
        return nullptr;
    std::vector<unsigned char> packed;
    for (const resbuf* item = group->rbnext; item != nullptr && item->restype == QeRb::kBinaryChunk;
         item = item->rbnext) {
        if (!holdsBytes(*item))
            return nullptr;
        const std::span<const unsigned char> bytes = bytesOf(*item);
        packed.insert(packed.end(), bytes.begin(), bytes.end());
    }
    return DecodeDefinitionBytes(packed.data(), packed.size());
}

Library::DefinitionBase* ResbufChunkToDefinition(const resbuf* chunk)
{
    if (chunk == nullptr || chunk->restype != QeRb::kBinaryChunk || !holdsBytes(*chunk))
        return nullptr;
    const std::span<const unsigned char> bytes = bytesOf(*chunk);
    return DecodeDefinitionBytes(bytes.data(), bytes.size());
}

} // namespace Orvel
