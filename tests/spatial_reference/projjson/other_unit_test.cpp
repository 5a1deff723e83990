// Units with the name of a well-known unit but another factor. PROJ writes the well-known unit into PROJJSON instead of
// them.
#include "embedded/base/text.h"
#include "embedded/spatial_reference/definitions/user_text.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

std::wstring projectedSystem(const std::wstring& angle, const std::wstring& length)
{
    return L"PROJCS[\"p\",GEOGCS[\"g\",DATUM[\"d\",SPHEROID[\"s\",6378137,298]],PRIMEM[\"Greenwich\",0]," + angle +
           L"],PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"latitude_of_origin\",0],PARAMETER[\"central_meridian\","
           L"9],"
           L"PARAMETER[\"scale_factor\",0.9996],PARAMETER[\"false_easting\",500000],PARAMETER[\"false_northing\",0]," +
           length + L"]";
}

constexpr const wchar_t* kDegree = L"UNIT[\"degree\",0.0174532925199433]";

struct UnitCase {
    std::wstring wkt;
    std::vector<std::wstring> expectedParts; // of the WKT that is written again
};

class OtherUnit : public SpatialReferenceTest, public testing::WithParamInterface<UnitCase> {
protected:
    static void expectUnits(const CoordinateReferenceSystemDefinition& definition)
    {
        const std::wstring wkt = writeWkt(definition);
        for (const std::wstring& part : GetParam().expectedParts)
            EXPECT_NE(wkt.find(part), std::wstring::npos) << Embedded::utf8FromWide(wkt);
    }
    static void expectUnits(const DefinitionBaseArray& stored)
    {
        const auto* system = dynamic_cast<const CoordinateReferenceSystemDefinition*>(stored.GetItem(0));
        ASSERT_NE(system, nullptr);
        expectUnits(*system);
    }
};

TEST_P(OtherUnit, UnitWithAnotherFactor_IsKeptInEveryStoredForm)
{
    const auto definition = fromText(GetParam().wkt);
    expectUnits(*definition);
    const auto packed = readStream(writeStream({definition.get()}));
    ASSERT_TRUE(packed);
    expectUnits(*packed);
    Holder<DefinitionBaseArray> text;
    ASSERT_EQ(deserialize(serializedText(*definition, true), text), statusOk);
    expectUnits(*text);
    expectUnits(*fromText(writeWkt(*definition)));
}

INSTANTIATE_TEST_SUITE_P(
    Units, OtherUnit,
    testing::Values(
        UnitCase{projectedSystem(kDegree, L"UNIT[\"metre\",0.01]"),
                 {L"UNIT[\"metre\",0.01]", L"\"false_easting\",500000"}},
        UnitCase{projectedSystem(kDegree, L"UNIT[\"metre\",0.01,AUTHORITY[\"EPSG\",\"9001\"]]"),
                 {L"UNIT[\"metre\",0.01"}},
        UnitCase{projectedSystem(L"UNIT[\"degree\",0.01]", L"UNIT[\"metre\",1]"), {L"UNIT[\"degree\",0.01]"}},
        UnitCase{projectedSystem(L"UNIT[\"grad\",0.5]", L"UNIT[\"metre\",1]"), {L"UNIT[\"grad\",0.5]"}},
        UnitCase{projectedSystem(kDegree, L"UNIT[\"foot\",0.5]"), {L"UNIT[\"foot\",0.5]"}},
        UnitCase{projectedSystem(kDegree, L"UNIT[\"US survey foot\",0.5]"), {L"UNIT[\"US survey foot\",0.5]"}},
        UnitCase{L"LOCAL_CS[\"x\",UNIT[\"metre\",0.01],AXIS[\"a\",EAST],AXIS[\"b\",NORTH]]", {L"UNIT[\"metre\",0.01]"}},
        // The prime meridian lies 5 * 0.01 radians east, and the semi-major axis is 6378137 m.
        UnitCase{L"GEODCRS[\"x\",DATUM[\"d\",ELLIPSOID[\"s\",637813700,298,LENGTHUNIT[\"metre\",0.01]]],"
                 L"PRIMEM[\"pm\",5,ANGLEUNIT[\"degree\",0.01]],CS[ellipsoidal,2],AXIS[\"latitude\",north],"
                 L"AXIS[\"longitude\",east],ANGLEUNIT[\"degree\",0.0174532925199433]]",
                 {L"SPHEROID[\"s\",6378137,298]", L"PRIMEM[\"pm\",2.8647889756"}},
        // The central meridian lies 9 * 0.01 radians east, and the scale is 99.96 * 0.01.
        UnitCase{L"PROJCRS[\"p\",BASEGEODCRS[\"g\",DATUM[\"d\",ELLIPSOID[\"s\",6378137,298]]],CONVERSION[\"c\","
                 L"METHOD[\"Transverse Mercator\",ID[\"EPSG\",9807]],"
                 L"PARAMETER[\"Latitude of natural origin\",0,ANGLEUNIT[\"degree\",0.01]],"
                 L"PARAMETER[\"Longitude of natural origin\",9,ANGLEUNIT[\"degree\",0.01]],"
                 L"PARAMETER[\"Scale factor at natural origin\",99.96,SCALEUNIT[\"unity\",0.01]],"
                 L"PARAMETER[\"False easting\",50000000,LENGTHUNIT[\"metre\",0.01]],"
                 L"PARAMETER[\"False northing\",0,LENGTHUNIT[\"metre\",0.01]]],CS[Cartesian,2],AXIS[\"(E)\",east],"
                 L"AXIS[\"(N)\",north],LENGTHUNIT[\"metre\",1]]",
                 {L"\"central_meridian\",5.1566201561", L"\"scale_factor\",0.9996]", L"\"false_easting\",500000]"}}));

class RefusedText : public SpatialReferenceTest {
protected:
    static void expectRefused(const std::wstring& text, const std::string& reason)
    {
        CoordinateReferenceSystemDefinition* definition = nullptr;
        EXPECT_EQ(CoordinateReferenceSystemDefinition::CreateFromText(text.c_str(), L"USER:1", definition),
                  statusUnreadable);
        const Holder<CoordinateReferenceSystemDefinition> held(definition);
        const auto check = Embedded::checkUserText(Embedded::utf8FromWide(text));
        ASSERT_FALSE(check);
        EXPECT_EQ(check.error().message, reason);
    }
};

TEST_F(RefusedText, AngularUnitNamedMetre_IsRefused)
{
    expectRefused(L"GEOGCRS[\"x\",DATUM[\"d\",ELLIPSOID[\"s\",6378137,298]],CS[ellipsoidal,2],AXIS[\"latitude\",north],"
                  L"AXIS[\"longitude\",east],ANGLEUNIT[\"metre\",0.01]]",
                  "a unit cannot be stored as the definition has it");
}

/// A plane system in PROJJSON.
std::wstring localPlane(const std::wstring& name, const std::wstring& code)
{
    return L"{\"type\":\"EngineeringCRS\",\"name\":\"" + name +
           L"\",\"datum\":{\"name\":\"D\"},\"coordinate_system\":{\"subtype\":\"Cartesian\",\"axis\":["
           L"{\"name\":\"Easting\",\"abbreviation\":\"X\",\"direction\":\"east\",\"unit\":\"metre\"},"
           L"{\"name\":\"Northing\",\"abbreviation\":\"Y\",\"direction\":\"north\",\"unit\":\"metre\"}]},"
           L"\"id\":{\"authority\":\"USER\",\"code\":\"" +
           code + L"\"}}";
}

TEST_F(RefusedText, NulInANameOrCode_IsRefused)
{
    EXPECT_EQ(nameOf(*fromText(localPlane(L"A", L"1"))), L"A");
    expectRefused(localPlane(L"A\\u0000B", L"1"), "name: a text holds a NUL character (\\u0000)");
    expectRefused(localPlane(L"A", L"1\\u0000"), "id.code: a text holds a NUL character (\\u0000)");
}

TEST_F(RefusedText, NulInAStoredName_IsUnreadable)
{
    std::wstring stored = serializedText(*fromText(localPlane(L"Yard", L"1")), false);
    stored.replace(stored.find(L"Yard"), 4, L"Y\\u0000d");
    Holder<DefinitionBaseArray> definitions;
    EXPECT_EQ(deserialize(stored, definitions), statusUnreadable);
}

TEST_F(RefusedText, InvalidJson_IsRefusedWithTheReason)
{
    expectRefused(L"{\"a\":1,\"a\":2}", "the key \"a\" appears twice");
    const std::wstring deep = L"{\"a\":" + std::wstring(32, L'[') + std::wstring(32, L']') + L"}";
    expectRefused(deep, "a[0][0][0][0][0][0][0][0][0][0][0][0][0]…: nested deeper than 32 levels");
}

} // namespace
