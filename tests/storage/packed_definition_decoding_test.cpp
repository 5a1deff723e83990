#include <random>

#include "storage/failing_calls.h"
#include "storage/packed_definition.h"
#include "storage/packed_forms.h"
#include "storage/reference_run_length.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;

class PackedDefinitionDecoding : public PlatformTest {
protected:
    const SystemHolder system = catalogSystem(L"EPSG:25832");
    const DatumHolder datum = catalogDatum(L"EPSG:6258");
    const EllipsoidHolder ellipsoid = catalogEllipsoid(L"EPSG:7019");

    static Orvel::LibraryObject<Library::DefinitionBase> decoded(const Bytes& bytes)
    {
        return Orvel::DecodeDefinitionBytes(bytes.data(), bytes.size());
    }
    /// The kind and code of the definition, or "none".
    static std::wstring decodedAs(const Bytes& bytes) { return describe(decoded(bytes).get()); }
};

TEST_F(PackedDefinitionDecoding, EncodedSystemIsDecoded)
{
    EXPECT_EQ(decodedAs(encoded(system.get())), L"system EPSG:25832");
}

TEST_F(PackedDefinitionDecoding, EncodedDatumIsDecoded)
{
    EXPECT_EQ(decodedAs(encoded(datum.get())), L"datum EPSG:6258");
}

TEST_F(PackedDefinitionDecoding, EncodedEllipsoidIsDecoded)
{
    EXPECT_EQ(decodedAs(encoded(ellipsoid.get())), L"ellipsoid EPSG:7019");
}

TEST_F(PackedDefinitionDecoding, EncodedUserDefinedSystemIsDecoded)
{
    EXPECT_EQ(decodedAs(encoded(userSystem(L"MINE:7").get())), L"system MINE:7");
}

TEST_F(PackedDefinitionDecoding, DecodedSystemEncodesIntoTheSameBytes)
{
    EXPECT_EQ(encoded(decoded(encoded(system.get())).get()), encoded(system.get()));
}

TEST_F(PackedDefinitionDecoding, NullGivesNoDefinition)
{
    EXPECT_FALSE(Orvel::DecodeDefinitionBytes(nullptr, 10));
}

TEST_F(PackedDefinitionDecoding, NoBytesGiveNoDefinition)
{
    const unsigned char byte = 1;
    EXPECT_FALSE(Orvel::DecodeDefinitionBytes(&byte, 0));
}

TEST_F(PackedDefinitionDecoding, MalformedPacketsGiveNoDefinition)
{
    EXPECT_EQ(decodedAs({0x05, 0x01, 0x02}), L"none");
}

TEST_F(PackedDefinitionDecoding, FormOfSixteenBytesGivesNoDefinitionWithoutALibraryCall)
{
    const auto calls = recordFallibleCalls([&] { EXPECT_EQ(decodedAs(referencePacked(kSystemClassId)), L"none"); });
    EXPECT_EQ(calls.size(), 0U);
}

TEST_F(PackedDefinitionDecoding, FormOfSeventeenBytesReachesTheLibrary)
{
    const auto calls = recordFallibleCalls([&] {
        EXPECT_EQ(decodedAs(referencePacked(joined({kSystemClassId, {1}}))), L"none");
    });
    EXPECT_EQ(calls.size(), 4U) << "identifier, and creating, reading and listing the stream";
}

TEST_F(PackedDefinitionDecoding, UnknownClassIdGivesNoDefinition)
{
    const Bytes stream = writeStream({system.get()});
    for (std::size_t index = 0; index < kSystemClassId.size(); ++index) {
        Bytes classId = kSystemClassId;
        classId[index] ^= 0x40;
        EXPECT_EQ(decodedAs(packedForm(classId, stream)), L"none") << "byte " << index;
    }
}

TEST_F(PackedDefinitionDecoding, ClassIdOfAnotherKindIsAccepted)
{
    for (const Bytes& classId : {kSystemClassId, kDatumClassId, kEllipsoidClassId}) {
        EXPECT_EQ(decodedAs(packedForm(classId, writeStream({system.get()}))), L"system EPSG:25832");
        EXPECT_EQ(decodedAs(packedForm(classId, writeStream({datum.get()}))), L"datum EPSG:6258");
        EXPECT_EQ(decodedAs(packedForm(classId, writeStream({ellipsoid.get()}))), L"ellipsoid EPSG:7019");
    }
}

TEST_F(PackedDefinitionDecoding, StreamOfTwoDefinitionsGivesNoDefinition)
{
    EXPECT_EQ(decodedAs(packedForm(kDatumClassId, writeStream({datum.get(), ellipsoid.get()}))), L"none");
}

TEST_F(PackedDefinitionDecoding, StreamWithItsFirstByteGivesNoDefinition)
{
    const Bytes stream = writeStream({system.get()});
    EXPECT_EQ(decodedAs(referencePacked(joined({kSystemClassId, stream}))), L"none");
}

TEST_F(PackedDefinitionDecoding, OtherPacketsForTheSameBytesAreAccepted)
{
    const Bytes form = joined({kEllipsoidClassId, writeStream({ellipsoid.get()})});
    Bytes packets;
    for (std::size_t index = 0; index < form.size(); ++index) {
        if (index != 16) // the stream's first byte
            packets.insert(packets.end(), {0x81, form[index]});
    }
    EXPECT_EQ(decodedAs(packets), L"ellipsoid EPSG:7019");
}

TEST_F(PackedDefinitionDecoding, EveryTruncationGivesNoDefinition)
{
    const Bytes whole = encoded(system.get());
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(decodedAs(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))), L"none")
            << length << " bytes";
}

TEST_F(PackedDefinitionDecoding, RandomStreamsGiveAUsableDefinitionOrNone)
{
    std::mt19937 engine(7);
    std::uniform_int_distribution<unsigned> byte(0, 255);
    for (int round = 0; round < 2000; ++round) {
        Bytes form = kSystemClassId;
        for (unsigned count = 1 + byte(engine); count > 0; --count)
            form.push_back(static_cast<unsigned char>(byte(engine)));
        const auto definition = decoded(referencePacked(form));
        if (definition) {
            EXPECT_NE(describe(definition.get()), L"") << toHex(form); // an accepted definition is usable
        }
    }
}

TEST_F(PackedDefinitionDecoding, EveryFailingCallGivesNoDefinition)
{
    const Bytes bytes = encoded(system.get());
    const auto calls = recordFallibleCalls([&] { EXPECT_TRUE(decoded(bytes)); });
    EXPECT_GE(calls.size(), 4U);
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(decoded(bytes)) << call;
    }
}

TEST_F(PackedDefinitionDecoding, CallThatSucceedsWithoutAResultGivesNoDefinition)
{
    const Bytes bytes = encoded(system.get());
    for (const char* const call : {"StringFromCLSID", "DefinitionStream::CreateInstance", "DefinitionStream::Read",
                                   "DefinitionStream::GetDefinitions"}) {
        const ScopedFault fault(failing(call, 0));
        EXPECT_FALSE(decoded(bytes)) << call;
    }
}

} // namespace
} // namespace Tests
