#include "storage/packed_forms.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "storage/packed_definition.h"
#include "storage/reference_run_length.h"

namespace Tests {

const Bytes kSystemClassId{0x4B, 0xEA, 0x00, 0x3C, 0x84, 0x0B, 0xD2, 0x11,
                           0x9D, 0xE2, 0x08, 0x00, 0x09, 0xAC, 0xE1, 0x8E};
const Bytes kDatumClassId{0xB6, 0x1D, 0xE0, 0xB4, 0x13, 0x0D, 0xD2, 0x11,
                          0x9D, 0xE2, 0x08, 0x00, 0x09, 0xAC, 0xE1, 0x8E};
const Bytes kEllipsoidClassId{0xB4, 0x1D, 0xE0, 0xB4, 0x13, 0x0D, 0xD2, 0x11,
                              0x9D, 0xE2, 0x08, 0x00, 0x09, 0xAC, 0xE1, 0x8E};

Bytes writeStream(std::initializer_list<const Library::DefinitionBase*> definitions)
{
    Orvel::LibraryObject<Library::DefinitionStream> stream;
    requireOk(Library::DefinitionStream::CreateInstance(stream.put()));
    for (const Library::DefinitionBase* definition : definitions)
        requireOk(stream->Add(definition));
    Bytes bytes(1024);
    std::size_t length = bytes.size();
    requireOk(stream->Write(bytes.data(), length, Library::formatBinary, 0));
    bytes.resize(length);
    return bytes;
}

Bytes packedForm(const Bytes& classId, const Bytes& stream)
{
    return referencePacked(joined({classId, Bytes(stream.begin() + 1, stream.end())}));
}

Bytes encoded(const Library::DefinitionBase* definition)
{
    Bytes bytes;
    EXPECT_TRUE(Orvel::EncodeDefinitionBytes(definition, bytes));
    return bytes;
}

Items makeGroup(const Bytes& packedBytes)
{
    Items items{{1002, L"{"}};
    for (std::size_t at = 0; at < packedBytes.size(); at += 127) {
        const std::size_t count = std::min<std::size_t>(127, packedBytes.size() - at);
        items.push_back({310, Bytes(packedBytes.data() + at, packedBytes.data() + at + count)});
    }
    items.push_back({1002, L"}"});
    return items;
}

Items makeGroup(const Library::DefinitionBase* definition)
{
    return makeGroup(encoded(definition));
}

Items makeChunk(const Library::DefinitionBase* definition)
{
    return {{310, encoded(definition)}};
}

Items joinedItems(std::initializer_list<Items> parts)
{
    Items items;
    for (const Items& part : parts)
        items.insert(items.end(), part.begin(), part.end());
    return items;
}

} // namespace Tests
