#include "storage/definition_class_id.h"

#include <algorithm>

#include "storage/failing_calls.h"
#include "storage/packed_forms.h"
#include "storage/unusual_definitions.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;

class DefinitionClassId : public PlatformTest {
protected:
    static std::string hexOfClassId(const Library::DefinitionBase* definition)
    {
        const auto bytes = Orvel::DefinitionKindClsid(definition);
        return bytes ? hexOf(Bytes(bytes->begin(), bytes->end())) : "none";
    }

    static bool isKnown(const Bytes& bytes)
    {
        Orvel::ClassIdBytes classId{};
        std::copy(bytes.begin(), bytes.end(), classId.begin());
        return Orvel::isDefinitionKindClsid(classId);
    }
};

TEST_F(DefinitionClassId, SystemHasItsSixteenBytes)
{
    EXPECT_EQ(hexOfClassId(catalogSystem(L"EPSG:25832").get()), "4bea003c840bd2119de2080009ace18e");
}

TEST_F(DefinitionClassId, DatumHasItsSixteenBytes)
{
    EXPECT_EQ(hexOfClassId(catalogDatum(L"EPSG:6258").get()), "b61de0b4130dd2119de2080009ace18e");
}

TEST_F(DefinitionClassId, EllipsoidHasItsSixteenBytes)
{
    EXPECT_EQ(hexOfClassId(catalogEllipsoid(L"EPSG:7019").get()), "b41de0b4130dd2119de2080009ace18e");
}

TEST_F(DefinitionClassId, DefinitionOfAnotherTypeHasNone)
{
    EXPECT_EQ(hexOfClassId(otherDefinition().get()), "none");
}

TEST_F(DefinitionClassId, NullHasNone)
{
    EXPECT_EQ(hexOfClassId(nullptr), "none");
}

TEST_F(DefinitionClassId, WhereThereIsNoTextNothingIsConverted)
{
    const ScopedFault anyTextIsConverted(failing("CLSIDFromString", 0));
    EXPECT_EQ(hexOfClassId(otherDefinition().get()), "none");
}

TEST_F(DefinitionClassId, TransformationHasNone)
{
    Orvel::LibraryObject<Library::GeodeticTransformationDefinition> transformation;
    ASSERT_EQ(Library::GeodeticTransformationDefinition::Load(L"EPSG:3859", transformation.put()), Library::statusOk);
    EXPECT_EQ(hexOfClassId(transformation.get()), "none");
}

TEST_F(DefinitionClassId, FailingConversionOfTheTextGivesNone)
{
    const auto system = catalogSystem(L"EPSG:25832");
    const ScopedFault fault(failing("CLSIDFromString"));
    EXPECT_EQ(hexOfClassId(system.get()), "none");
}

TEST_F(DefinitionClassId, TheThreeIdentifiersAreKnown)
{
    EXPECT_TRUE(isKnown(kSystemClassId));
    EXPECT_TRUE(isKnown(kDatumClassId));
    EXPECT_TRUE(isKnown(kEllipsoidClassId));
}

TEST_F(DefinitionClassId, IdentifierWithAnyByteChangedIsUnknown)
{
    for (Bytes classId : {kSystemClassId, kDatumClassId, kEllipsoidClassId}) {
        for (unsigned char& byte : classId) {
            byte ^= 0x40; // leads from none of the three to another
            EXPECT_FALSE(isKnown(classId)) << hexOf(classId);
            byte ^= 0x40;
        }
    }
}

TEST_F(DefinitionClassId, ZerosAreUnknown)
{
    EXPECT_FALSE(isKnown(repeated(0, 16)));
}

TEST_F(DefinitionClassId, FailingConversionToTextMakesItUnknown)
{
    const ScopedFault fault(failing("StringFromCLSID"));
    EXPECT_FALSE(isKnown(kSystemClassId));
}

TEST_F(DefinitionClassId, ConversionThatSucceedsWithoutATextMakesItUnknown)
{
    const ScopedFault fault(failing("StringFromCLSID", 0));
    EXPECT_FALSE(isKnown(kSystemClassId));
}

} // namespace
} // namespace Tests
