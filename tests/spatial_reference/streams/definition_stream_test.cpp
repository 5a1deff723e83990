#include <algorithm>
#include <array>
#include <random>

#include "embedded/diagnostics/resource_counters.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

/// The checksum of the format, computed independently and without tables.
std::uint32_t checksum(const Bytes& bytes, std::size_t length)
{
    std::uint32_t value = ~0U;
    for (std::size_t index = 0; index < length * 8; ++index) {
        const std::uint32_t byte = bytes[index / 8];
        const std::uint32_t bit = (byte >> (index % 8) & 1U) ^ (value & 1U);
        value = value >> 1 ^ bit * 0xEDB88320U;
    }
    return ~value;
}

/// Appends the checksum of the bytes.
Bytes withChecksum(Bytes body)
{
    const std::uint32_t value = checksum(body, body.size());
    for (int shift = 0; shift < 32; shift += 8)
        body.push_back(static_cast<unsigned char>(value >> shift & 0xFF));
    return body;
}

Bytes withoutChecksum(Bytes bytes)
{
    bytes.resize(bytes.size() - 4);
    return bytes;
}

class DefinitionStreams : public SpatialReferenceTest {
protected:
    /// Reading must fail as unreadable or give definitions that can be queried.
    static void expectUnreadableOrComplete(const Bytes& bytes)
    {
        const auto definitions = readStream(bytes);
        if (!definitions) {
            EXPECT_EQ(readStatus(bytes), statusUnreadable);
            return;
        }
        for (int index = 0; index < definitions->GetCount(); ++index) {
            EXPECT_NE(codeOf(*definitions->GetItem(index)), L"");
            EXPECT_NE(describe(*definitions->GetItem(index)), L"");
        }
    }

    static Bytes systemStream(const std::wstring& code) { return writeStream({loadSystem(code).get()}); }
};

TEST_F(DefinitionStreams, ANameWithANulIsUnreadable)
{
    const auto definition = fromText(L"LOCAL_CS[\"Yard\",UNIT[\"metre\",1]]");
    Bytes body = withoutChecksum(writeStream({definition.get()}));
    EXPECT_TRUE(readStream(withChecksum(body)));
    const std::string name = "Yard";
    const auto place = std::search(body.begin(), body.end(), name.begin(), name.end());
    ASSERT_NE(place, body.end());
    *(place + 1) = 0;
    EXPECT_EQ(readStatus(withChecksum(body)), statusUnreadable);
}

TEST_F(DefinitionStreams, ASystemHasTheDocumentedBytes)
{
    const Bytes expected{
        0x00, 0x01,       // first byte, format version
        0x01,             // one definition
        0x01,             // a coordinate reference system
        0x00,             // its code is the one in its definition
        0x0A, 0x05,       // an object of five members
        0x10, 0x40,       // "type": "EngineeringCRS"
        0x11, 0x08, 0x13, // "name": a text of 19 bytes
        'L',  'o',  'c',  'a', 'l', ' ', 'p',  'l',  'a',  'n',  'e',  ' ',  '(',
        'm',  'e',  't',  'r', 'e', ')', 0x16, 0x0A, 0x01, 0x11, 0x08, 0x0B, // "datum": {"name": a text of 11 bytes
        'L',  'o',  'c',  'a', 'l', ' ', 'd',  'a',  't',  'u',  'm',        // }
        0x19, 0xF0, 0x23,                           // "coordinate_system": vocabulary entry 259
        0x12, 0x0A, 0x02,                           // "id": an object of two members
        0x13, 0x6A,                                 // "authority": "LOCAL"
        0x14, 0x08, 0x05, 'M', 'E', 'T', 'R',  'E', // "code": a text of 5 bytes
    };
    EXPECT_EQ(systemStream(L"LOCAL:METRE"), withChecksum(expected));
}

TEST_F(DefinitionStreams, TheFirstByteIsZero)
{
    for (const wchar_t* code : {L"EPSG:4326", L"EPSG:7415", L"LOCAL:FOOT"})
        EXPECT_EQ(systemStream(code).front(), 0);
}

TEST_F(DefinitionStreams, ASystemReadFromAStreamEqualsTheWrittenOne)
{
    for (const wchar_t* code : {L"EPSG:25832", L"EPSG:7415", L"EPSG:4978", L"EPSG:27572", L"EPSG:4001", L"ESRI:102100",
                                L"IGNF:LAMB93", L"IAU_2015:49910", L"OGC:CRS84", L"LOCAL:FOOT"}) {
        const auto definition = loadSystem(code);
        const auto copies = readStream(writeStream({definition.get()}));
        ASSERT_TRUE(copies) << code;
        ASSERT_EQ(copies->GetCount(), 1);
        const auto* copy = dynamic_cast<const CoordinateReferenceSystemDefinition*>(copies->GetItem(0));
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(codeOf(*copy), code);
        EXPECT_EQ(nameOf(*copy), nameOf(*definition));
        EXPECT_EQ(kindOf(*copy), kindOf(*definition));
        EXPECT_EQ(datumCodeOf(*copy), datumCodeOf(*definition));
        EXPECT_EQ(ellipsoidCodeOf(*copy), ellipsoidCodeOf(*definition));
        EXPECT_EQ(describe(*copy), describe(*definition));
        EXPECT_EQ(writeWkt(*copy), writeWkt(*definition));
    }
}

TEST_F(DefinitionStreams, DatumsAndEllipsoidsKeepTheirClass)
{
    const auto first = loadDatum(L"EPSG:6289");
    const auto second = loadEllipsoid(L"EPSG:7042");
    const auto copies = readStream(writeStream({first.get(), second.get()}));
    ASSERT_TRUE(copies);
    ASSERT_EQ(copies->GetCount(), 2);
    EXPECT_NE(dynamic_cast<const DatumDefinition*>(copies->GetItem(0)), nullptr);
    EXPECT_NE(dynamic_cast<const EllipsoidDefinition*>(copies->GetItem(1)), nullptr);
    EXPECT_EQ(describe(*copies->GetItem(0)), describe(*first));
    EXPECT_EQ(describe(*copies->GetItem(1)), describe(*second));
}

TEST_F(DefinitionStreams, AUserDefinedCodeIsKept)
{
    const auto definition = fromText(L"+proj=utm +zone=32 +ellps=GRS80", L"Büro:Süd");
    const auto copies = readStream(writeStream({definition.get()}));
    ASSERT_TRUE(copies);
    EXPECT_EQ(codeOf(*copies->GetItem(0)), L"Büro:Süd");
    EXPECT_EQ(describe(*copies->GetItem(0)), describe(*definition));
}

TEST_F(DefinitionStreams, TheStreamHoldsACopy)
{
    const Holder<DefinitionStream> stream(new DefinitionStream);
    {
        const auto definition = loadDatum(L"EPSG:6289");
        EXPECT_EQ(stream->Add(definition.get()), statusOk);
        EXPECT_EQ(definition->SetEllipsoid(loadEllipsoid(L"EPSG:7001").get()), statusOk);
    }
    EXPECT_EQ(describe(*definitionsIn(*stream)->GetItem(0)), describe(*loadDatum(L"EPSG:6289")));
}

TEST_F(DefinitionStreams, AnEmptyStreamIsWrittenAndRead)
{
    const Bytes bytes = writeStream({});
    EXPECT_EQ(bytes, withChecksum({0x00, 0x01, 0x00}));
    const auto copies = readStream(bytes);
    ASSERT_TRUE(copies);
    EXPECT_EQ(copies->GetCount(), 0);
}

TEST_F(DefinitionStreams, ATooSmallBufferStaysUnchanged)
{
    const Holder<DefinitionStream> stream(new DefinitionStream);
    EXPECT_EQ(stream->Add(loadSystem(L"EPSG:25832").get()), statusOk);
    const std::size_t needed = systemStream(L"EPSG:25832").size();
    Bytes buffer(needed, 0xAA);
    std::size_t length = needed - 1;
    EXPECT_EQ(stream->Write(buffer.data(), length, formatBinary, 0), statusBufferTooSmall);
    EXPECT_EQ(length, needed - 1);
    EXPECT_EQ(buffer, Bytes(needed, 0xAA));
    length = needed;
    EXPECT_EQ(stream->Write(buffer.data(), length, formatBinary, 0), statusOk);
    EXPECT_EQ(length, needed);
    EXPECT_EQ(buffer, systemStream(L"EPSG:25832"));
}

/// The name of the system decides the length of the stream.
class StreamLimit : public DefinitionStreams {
protected:
    static Holder<CoordinateReferenceSystemDefinition> systemWithNameOfLength(std::size_t characters)
    {
        return fromText(L"GEOGCS[\"" + std::wstring(characters, L'n') +
                            L"\",DATUM[\"d\",SPHEROID[\"e\",6378137,298]],PRIMEM[\"Greenwich\",0],"
                            L"UNIT[\"degree\",0.0174532925199433]]",
                        L"USER:1");
    }

    static Status write(const DefinitionBase& definition, std::size_t& length)
    {
        const Holder<DefinitionStream> stream(new DefinitionStream);
        EXPECT_EQ(stream->Add(&definition), statusOk);
        Bytes buffer(4096);
        length = buffer.size();
        return stream->Write(buffer.data(), length, formatBinary, 0);
    }
};

TEST_F(StreamLimit, AStreamIsWrittenUpToTheLimitAndNotBeyond)
{
    std::size_t length = 0;
    ASSERT_EQ(write(*systemWithNameOfLength(500), length), statusOk);
    const std::size_t longest = 500 + (1024 - length);
    EXPECT_EQ(write(*systemWithNameOfLength(longest), length), statusOk);
    EXPECT_EQ(length, 1024U);
    EXPECT_EQ(write(*systemWithNameOfLength(longest + 1), length), statusBufferTooSmall);
    EXPECT_EQ(length, 4096U);
}

TEST_F(StreamLimit, AStreamBeyondTheLimitIsUnreadable)
{
    Bytes bytes(1024, 0);
    EXPECT_EQ(readStatus(withChecksum(bytes)), statusUnreadable);
}

TEST_F(DefinitionStreams, EveryTruncationIsUnreadable)
{
    const Bytes whole = systemStream(L"EPSG:7415");
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(readStatus(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))),
                  statusUnreadable)
            << length;
}

TEST_F(DefinitionStreams, EveryChangedBitIsUnreadable)
{
    const Bytes whole = systemStream(L"EPSG:25832");
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        Bytes changed = whole;
        changed[bit / 8] ^= static_cast<unsigned char>(1U << bit % 8);
        EXPECT_EQ(readStatus(changed), statusUnreadable) << bit;
    }
}

TEST_F(DefinitionStreams, BytesAfterTheEndAreUnreadable)
{
    Bytes body = withoutChecksum(systemStream(L"EPSG:25832"));
    body.push_back(0);
    EXPECT_EQ(readStatus(withChecksum(body)), statusUnreadable);
}

TEST_F(DefinitionStreams, AnotherVersionIsUnreadable)
{
    Bytes body = withoutChecksum(systemStream(L"EPSG:25832"));
    body[1] = 2;
    EXPECT_EQ(readStatus(withChecksum(body)), statusUnreadable);
}

TEST_F(DefinitionStreams, AnotherFirstByteIsUnreadable)
{
    Bytes body = withoutChecksum(systemStream(L"EPSG:25832"));
    body[0] = 1;
    EXPECT_EQ(readStatus(withChecksum(body)), statusUnreadable);
}

TEST_F(DefinitionStreams, ATruncatedStreamWithAValidChecksumIsUnreadableOrComplete)
{
    const Bytes body = withoutChecksum(systemStream(L"EPSG:7415"));
    for (std::size_t length = 0; length < body.size(); ++length)
        expectUnreadableOrComplete(
            withChecksum(Bytes(body.begin(), body.begin() + static_cast<std::ptrdiff_t>(length))));
}

TEST_F(DefinitionStreams, AChangedBitWithAValidChecksumIsUnreadableOrComplete)
{
    const Bytes body = withoutChecksum(systemStream(L"EPSG:28992"));
    for (std::size_t bit = 0; bit < body.size() * 8; ++bit) {
        Bytes changed = body;
        changed[bit / 8] ^= static_cast<unsigned char>(1U << bit % 8);
        expectUnreadableOrComplete(withChecksum(changed));
    }
}

TEST_F(DefinitionStreams, RandomBytesAreUnreadableOrComplete)
{
    std::mt19937 random(25832);
    for (int repeat = 0; repeat < 20000; ++repeat) {
        Bytes body{0x00, 0x01, 0x01, static_cast<unsigned char>(1 + random() % 3), 0x00};
        for (auto length = random() % 60; length > 0; --length)
            body.push_back(static_cast<unsigned char>(random() % 3 ? random() % 0x20 : random() % 256));
        expectUnreadableOrComplete(withChecksum(body));
    }
}

TEST_F(DefinitionStreams, DeepNestingIsUnreadable)
{
    Bytes body{0x00, 0x01, 0x01, 0x01, 0x00};
    for (int level = 0; level < 480; ++level)
        body.insert(body.end(), {0x09, 0x01}); // an array of one
    body.push_back(0x00);
    EXPECT_EQ(readStatus(withChecksum(body)), statusUnreadable);
}

TEST_F(DefinitionStreams, ALengthBeyondTheBytesIsUnreadable)
{
    for (const unsigned char tag : Bytes{0x08, 0x09, 0x0A}) { // text, array, object
        const Bytes body{0x00, 0x01, 0x01, 0x01, 0x00, tag, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01};
        EXPECT_EQ(readStatus(withChecksum(body)), statusUnreadable) << int{tag};
    }
}

TEST_F(DefinitionStreams, ARepeatedKeyIsUnreadable)
{
    Bytes body = withoutChecksum(systemStream(L"LOCAL:METRE"));
    body[6] = 0x06;
    body.insert(body.end(), {0x11, 0x08, 0x01, 'x'}); // a second "name"
    EXPECT_EQ(readStatus(withChecksum(body)), statusUnreadable);
}

TEST_F(DefinitionStreams, ADefinitionOfAnotherClassIsUnreadable)
{
    Bytes body = withoutChecksum(systemStream(L"EPSG:25832"));
    for (const unsigned char type : Bytes{0, 2, 3, 4, 5, 255}) {
        body[3] = type;
        EXPECT_EQ(readStatus(withChecksum(body)), statusUnreadable) << int{type};
    }
}

TEST_F(DefinitionStreams, AnUnreadableStreamClearsTheStream)
{
    const Holder<DefinitionStream> stream(new DefinitionStream);
    EXPECT_EQ(stream->Add(loadEllipsoid(L"EPSG:7004").get()), statusOk);
    const unsigned char damaged[] = {0, 1, 2};
    EXPECT_EQ(stream->Read(damaged, sizeof damaged, formatBinary, 1), statusUnreadable);
    EXPECT_EQ(definitionsIn(*stream)->GetCount(), 0);
}

TEST_F(DefinitionStreams, ReadingReplacesTheContentsOfTheStream)
{
    const Bytes bytes = writeStream({loadDatum(L"EPSG:6289").get()});
    const Holder<DefinitionStream> stream(new DefinitionStream);
    EXPECT_EQ(stream->Add(loadEllipsoid(L"EPSG:7004").get()), statusOk);
    EXPECT_EQ(stream->Read(bytes.data(), bytes.size(), formatBinary, 1), statusOk);
    const auto definitions = definitionsIn(*stream);
    ASSERT_EQ(definitions->GetCount(), 1);
    EXPECT_EQ(codeOf(*definitions->GetItem(0)), L"EPSG:6289");
}

TEST_F(DefinitionStreams, OtherFormatsAndFlagsAreRefused)
{
    const Holder<DefinitionStream> stream(new DefinitionStream);
    std::array<unsigned char, 64> buffer{};
    std::size_t length = buffer.size();
    EXPECT_EQ(stream->Write(buffer.data(), length, formatText, 0), statusUnsupported);
    EXPECT_EQ(stream->Write(buffer.data(), length, formatBinary, 1), statusInvalidArgument);
    EXPECT_EQ(stream->Write(nullptr, length, formatBinary, 0), statusInvalidArgument);
    EXPECT_EQ(length, buffer.size());
    EXPECT_EQ(stream->Read(buffer.data(), length, formatText, 1), statusUnsupported);
    EXPECT_EQ(stream->Read(buffer.data(), length, formatBinary, 0), statusInvalidArgument);
    EXPECT_EQ(stream->Read(nullptr, length, formatBinary, 1), statusInvalidArgument);
}

TEST_F(DefinitionStreams, OnlySystemsDatumsAndEllipsoidsCanBeAdded)
{
    const auto transformation = load<GeodeticTransformationDefinition>(L"EPSG:1763");
    const Holder<DefinitionStream> stream(new DefinitionStream);
    EXPECT_EQ(stream->Add(transformation.get()), statusUnsupported);
    EXPECT_EQ(stream->Add(nullptr), statusInvalidArgument);
}

} // namespace
