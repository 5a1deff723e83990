#include "storage/failing_calls.h"
#include "storage/packed_definition.h"
#include "storage/packed_forms.h"
#include "storage/unusual_definitions.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::EncodeDefinitionBytes;

class PackedDefinitionEncoding : public PlatformTest {
protected:
    const SystemHolder system = catalogSystem(L"EPSG:25832");
    Bytes bytes{1, 2, 3}; // must be replaced or removed
};

TEST_F(PackedDefinitionEncoding, LibraryStreamBeginsWithAZeroByte)
{
    EXPECT_EQ(writeStream({system.get()}).front(), 0);
}

TEST_F(PackedDefinitionEncoding, DefinitionIsItsClassIdAndItsStreamWithoutTheFirstByte)
{
    const auto expectPacked = [&](const Library::DefinitionBase* definition, const Bytes& classId) {
        ASSERT_TRUE(EncodeDefinitionBytes(definition, bytes));
        EXPECT_EQ(toHex(bytes), toHex(packedForm(classId, writeStream({definition}))));
    };
    expectPacked(system.get(), kSystemClassId);
    expectPacked(catalogDatum(L"EPSG:6258").get(), kDatumClassId);
    expectPacked(catalogEllipsoid(L"EPSG:7019").get(), kEllipsoidClassId);
}

TEST_F(PackedDefinitionEncoding, PackedBytesBeginWithALiteralPacketOfTheClassId)
{
    ASSERT_TRUE(EncodeDefinitionBytes(system.get(), bytes));
    EXPECT_EQ(Bytes(bytes.begin() + 1, bytes.begin() + 17), kSystemClassId);
    EXPECT_EQ(bytes.front() & 0x80, 0);
}

TEST_F(PackedDefinitionEncoding, NullGivesFalseAndNoBytes)
{
    EXPECT_FALSE(EncodeDefinitionBytes(nullptr, bytes));
    EXPECT_EQ(bytes, Bytes());
}

TEST_F(PackedDefinitionEncoding, DefinitionOfAnotherTypeGivesFalseAndNoBytes)
{
    EXPECT_FALSE(EncodeDefinitionBytes(otherDefinition().get(), bytes));
    EXPECT_EQ(bytes, Bytes());
}

TEST_F(PackedDefinitionEncoding, TransformationGivesFalseAndNoBytes)
{
    Orvel::LibraryObject<Library::GeodeticTransformationDefinition> transformation;
    ASSERT_EQ(Library::GeodeticTransformationDefinition::Load(L"EPSG:3859", transformation.put()), Library::statusOk);
    EXPECT_FALSE(EncodeDefinitionBytes(transformation.get(), bytes));
    EXPECT_EQ(bytes, Bytes());
}

TEST_F(PackedDefinitionEncoding, StreamFarAboveTheLimitGivesFalseAndNoBytes)
{
    const auto tooLong = UserSystem{.name = varied(3000)}.makeSystem();
    EXPECT_FALSE(EncodeDefinitionBytes(tooLong.get(), bytes));
    EXPECT_EQ(bytes, Bytes());
}

TEST_F(PackedDefinitionEncoding, LongestEncodedStreamHas1024Bytes)
{
    const auto systemNamed = [](std::size_t characters) { return UserSystem{.name = varied(characters)}.makeSystem(); };
    std::size_t characters = 500;
    while (characters < 1024 && EncodeDefinitionBytes(systemNamed(characters).get(), bytes))
        ++characters;
    EXPECT_FALSE(EncodeDefinitionBytes(systemNamed(characters).get(), bytes));
    EXPECT_TRUE(EncodeDefinitionBytes(systemNamed(characters - 1).get(), bytes));
    EXPECT_EQ(writeStream({systemNamed(characters - 1).get()}).size(), 1024U);
}

TEST_F(PackedDefinitionEncoding, EveryFailingCallGivesFalseAndNoBytes)
{
    const auto calls = recordFallibleCalls([&] { EXPECT_TRUE(EncodeDefinitionBytes(system.get(), bytes)); });
    ASSERT_EQ(calls.size(), 4U) << "identifier, and creating, filling and writing the stream";
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(EncodeDefinitionBytes(system.get(), bytes)) << call;
        EXPECT_EQ(bytes, Bytes()) << call;
    }
}

TEST_F(PackedDefinitionEncoding, StreamCreationWithoutAnObjectGivesFalseAndNoBytes)
{
    const ScopedFault fault(failing("DefinitionStream::CreateInstance", 0));
    EXPECT_FALSE(EncodeDefinitionBytes(system.get(), bytes));
    EXPECT_EQ(bytes, Bytes());
}

} // namespace
} // namespace Tests
