#include "storage/definition_group.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <span>
#include <vector>

#include "storage/packed_definition.h"
#include "storage/resbuf_chain_builder.h"

namespace Orvel {
namespace {

constexpr std::size_t kLargestChunk = 127;
constexpr std::size_t kLargestGroup = 32767; // in packed bytes; a drawing stores no larger group

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

bool appendChunks(ResbufChainBuilder& group, std::span<const unsigned char> bytes)
{
    while (!bytes.empty()) {
        const std::size_t length = (std::min)(bytes.size(), kLargestChunk);
        if (!group.append(chunkResbuf(bytes.first(length))))
            return false;
        bytes = bytes.subspan(length);
    }
    return true;
}

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

ResbufChain DefinitionToResbufGroup(const Library::DefinitionBase* definition)
{
    std::vector<unsigned char> packed;
    if (!EncodeDefinitionBytes(definition, packed) || packed.size() > kLargestGroup)
        return {};
    ResbufChainBuilder group;
    if (!group.append(braceResbuf(L'{')))
        return {};
    if (!appendChunks(group, packed))
        return {};
    if (!group.append(braceResbuf(L'}')))
        return {};
    return group.take();
}

LibraryObject<Library::DefinitionBase> ResbufGroupToDefinition(const resbuf* group)
{
    if (group == nullptr || group->restype != QeRb::kXdataControl)
        return {};
    std::vector<unsigned char> packed;
    for (const resbuf* item = group->rbnext; item != nullptr && item->restype == QeRb::kBinaryChunk;
         item = item->rbnext) {
        if (!holdsBytes(*item))
            return {};
        const std::span<const unsigned char> bytes = bytesOf(*item);
        packed.insert(packed.end(), bytes.begin(), bytes.end());
    }
    return DecodeDefinitionBytes(packed.data(), packed.size());
}

LibraryObject<Library::DefinitionBase> ResbufChunkToDefinition(const resbuf* chunk)
{
    if (chunk == nullptr || chunk->restype != QeRb::kBinaryChunk || !holdsBytes(*chunk))
        return {};
    const std::span<const unsigned char> bytes = bytesOf(*chunk);
    return DecodeDefinitionBytes(bytes.data(), bytes.size());
}

} // namespace Orvel
