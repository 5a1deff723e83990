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
    static std::string classIdAsHex(const Library::DefinitionBase* definition)
    {
        const auto bytes = Orvel::DefinitionKindClsid(definition);
        return bytes ? toHex(Bytes(bytes->begin(), bytes->end())) : "none";
    }

    static bool isKnown(const Bytes& bytes)
    {
        Orvel::ClassIdBytes classId{};
        std::copy(bytes.begin(), bytes.end(), classId.begin());
        return Orvel::isDefinitionKindClsid(classId);
    }
};

TEST_F(DefinitionClassId, SystemHasSixteenKnownBytes)
{
    EXPECT_EQ(classIdAsHex(catalogSystem(L"EPSG:25832").get()), "4bea003c840bd2119de2080009ace18e");
}

TEST_F(DefinitionClassId, DatumHasSixteenKnownBytes)
{
    EXPECT_EQ(classIdAsHex(catalogDatum(L"EPSG:6258").get()), "b61de0b4130dd2119de2080009ace18e");
}

TEST_F(DefinitionClassId, EllipsoidHasSixteenKnownBytes)
{
    EXPECT_EQ(classIdAsHex(catalogEllipsoid(L"EPSG:7019").get()), "b41de0b4130dd2119de2080009ace18e");
}

TEST_F(DefinitionClassId, DefinitionOfAnotherTypeHasNoClassId)
{
    EXPECT_EQ(classIdAsHex(otherDefinition().get()), "none");
}

TEST_F(DefinitionClassId, NullHasNoClassId)
{
    EXPECT_EQ(classIdAsHex(nullptr), "none");
}

TEST_F(DefinitionClassId, DefinitionOfAnotherTypeCausesNoConversion)
{
    const ScopedFault fault(failing("CLSIDFromString", 0)); // any conversion would give a class id
    EXPECT_EQ(classIdAsHex(otherDefinition().get()), "none");
}

TEST_F(DefinitionClassId, TransformationHasNoClassId)
{
    Orvel::LibraryObject<Library::GeodeticTransformationDefinition> transformation;
    ASSERT_EQ(Library::GeodeticTransformationDefinition::Load(L"EPSG:3859", transformation.put()), Library::statusOk);
    EXPECT_EQ(classIdAsHex(transformation.get()), "none");
}

TEST_F(DefinitionClassId, FailingConversionFromTextGivesNoClassId)
{
    const auto system = catalogSystem(L"EPSG:25832");
    const ScopedFault fault(failing("CLSIDFromString"));
    EXPECT_EQ(classIdAsHex(system.get()), "none");
}

TEST_F(DefinitionClassId, ClassIdsOfTheThreeKindsAreKnown)
{
    EXPECT_TRUE(isKnown(kSystemClassId));
    EXPECT_TRUE(isKnown(kDatumClassId));
    EXPECT_TRUE(isKnown(kEllipsoidClassId));
}

TEST_F(DefinitionClassId, ClassIdWithAnyByteChangedIsUnknown)
{
    for (Bytes classId : {kSystemClassId, kDatumClassId, kEllipsoidClassId}) {
        for (unsigned char& byte : classId) {
            byte ^= 0x40; // turns none of the three into another
            EXPECT_FALSE(isKnown(classId)) << toHex(classId);
            byte ^= 0x40;
        }
    }
}

TEST_F(DefinitionClassId, ZerosAreUnknown)
{
    EXPECT_FALSE(isKnown(repeated(0, 16)));
}

TEST_F(DefinitionClassId, ClassIdWhoseConversionToTextFailsIsUnknown)
{
    const ScopedFault fault(failing("StringFromCLSID"));
    EXPECT_FALSE(isKnown(kSystemClassId));
}

TEST_F(DefinitionClassId, ClassIdWhoseConversionReturnsNoTextIsUnknown)
{
    const ScopedFault fault(failing("StringFromCLSID", 0));
    EXPECT_FALSE(isKnown(kSystemClassId));
}

} // namespace
} // namespace Tests
