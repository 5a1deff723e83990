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
    Bytes bytes{1, 2, 3}; // something that must be gone afterwards
};

TEST_F(PackedDefinitionEncoding, TheLibrarysStreamBeginsWithTheZeroThatIsNotStored)
{
    EXPECT_EQ(streamOf({system.get()}).front(), 0);
}

TEST_F(PackedDefinitionEncoding, SystemIsItsIdentifierAndItsStreamLessOneByte)
{
    ASSERT_TRUE(EncodeDefinitionBytes(system.get(), bytes));
    EXPECT_EQ(hexOf(bytes), hexOf(packedForm(kSystemClassId, streamOf({system.get()}))));
}

TEST_F(PackedDefinitionEncoding, DatumIsItsIdentifierAndItsStreamLessOneByte)
{
    const auto datum = catalogDatum(L"EPSG:6258");
    ASSERT_TRUE(EncodeDefinitionBytes(datum.get(), bytes));
    EXPECT_EQ(hexOf(bytes), hexOf(packedForm(kDatumClassId, streamOf({datum.get()}))));
}

TEST_F(PackedDefinitionEncoding, EllipsoidIsItsIdentifierAndItsStreamLessOneByte)
{
    const auto ellipsoid = catalogEllipsoid(L"EPSG:7019");
    ASSERT_TRUE(EncodeDefinitionBytes(ellipsoid.get(), bytes));
    EXPECT_EQ(hexOf(bytes), hexOf(packedForm(kEllipsoidClassId, streamOf({ellipsoid.get()}))));
}

TEST_F(PackedDefinitionEncoding, IdentifierBeginsWithALiteralPacket)
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

TEST_F(PackedDefinitionEncoding, StreamFarOverItsLimitGivesFalseAndNoBytes)
{
    const auto tooLong = UserSystem{.name = varied(3000)}.system();
    EXPECT_FALSE(EncodeDefinitionBytes(tooLong.get(), bytes));
    EXPECT_EQ(bytes, Bytes());
}

TEST_F(PackedDefinitionEncoding, StreamOf1024BytesIsTheLongestThatIsEncoded)
{
    const auto systemNamed = [](std::size_t characters) { return UserSystem{.name = varied(characters)}.system(); };
    std::size_t characters = 500;
    while (characters < 1024 && EncodeDefinitionBytes(systemNamed(characters).get(), bytes))
        ++characters;
    EXPECT_FALSE(EncodeDefinitionBytes(systemNamed(characters).get(), bytes));
    EXPECT_TRUE(EncodeDefinitionBytes(systemNamed(characters - 1).get(), bytes));
    EXPECT_EQ(streamOf({systemNamed(characters - 1).get()}).size(), 1024U);
}

TEST_F(PackedDefinitionEncoding, EveryFailingCallGivesFalseAndNoBytes)
{
    const auto calls = fallibleCallsOf([&] { EXPECT_TRUE(EncodeDefinitionBytes(system.get(), bytes)); });
    ASSERT_EQ(calls.size(), 4U) << "identifier, and creating, filling and writing the stream";
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_FALSE(EncodeDefinitionBytes(system.get(), bytes)) << call;
        EXPECT_EQ(bytes, Bytes()) << call;
    }
}

TEST_F(PackedDefinitionEncoding, StreamThatIsNotThereDespiteSuccessGivesFalse)
{
    const ScopedFault fault(failing("DefinitionStream::CreateInstance", 0));
    EXPECT_FALSE(EncodeDefinitionBytes(system.get(), bytes));
    EXPECT_EQ(bytes, Bytes());
}

} // namespace
} // namespace Tests
