#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

class Linking : public SpatialReferenceTest {};

TEST_F(Linking, ADatumIsCopiedIntoTheSystem)
{
    const auto definition = loadSystem(L"EPSG:25832");
    {
        const auto other = loadDatum(L"EPSG:6289");
        EXPECT_EQ(definition->SetDatum(other.get()), statusOk);
    }
    EXPECT_EQ(datumCodeOf(*definition), L"EPSG:6289");
    EXPECT_EQ(ellipsoidCodeOf(*definition), L"EPSG:7004");
    EXPECT_EQ(codeOf(*definition), L"EPSG:25832");
}

TEST_F(Linking, AnEllipsoidIsCopiedIntoTheDatum)
{
    const auto definition = loadDatum(L"EPSG:6289");
    {
        const auto other = loadEllipsoid(L"EPSG:7001");
        EXPECT_EQ(definition->SetEllipsoid(other.get()), statusOk);
    }
    const wchar_t* code = nullptr;
    EXPECT_EQ(definition->GetEllipsoidCode(code), statusOk);
    EXPECT_STREQ(code, L"EPSG:7001");
    EXPECT_EQ(codeOf(*definition), L"EPSG:6289");
}

TEST_F(Linking, AnEllipsoidIsCopiedIntoASystemWithoutDatum)
{
    const auto definition = loadSystem(L"EPSG:4001");
    EXPECT_EQ(definition->SetEllipsoid(loadEllipsoid(L"EPSG:7004").get()), statusOk);
    EXPECT_EQ(ellipsoidCodeOf(*definition), L"EPSG:7004");
    EXPECT_EQ(datumCodeOf(*definition), L"");
}

TEST_F(Linking, LinkingItsOwnPartsLeavesASystemUnchanged)
{
    for (const wchar_t* code : {L"EPSG:25832", L"EPSG:7415", L"EPSG:27572", L"EPSG:4978", L"EPSG:4326"}) {
        const auto definition = loadSystem(code);
        const std::wstring before = describe(*definition);
        const auto part = datumOf(*definition);
        EXPECT_EQ(part->SetEllipsoid(ellipsoidOf(*definition).get()), statusOk);
        EXPECT_EQ(definition->SetDatum(part.get()), statusOk);
        EXPECT_EQ(describe(*definition), before) << code;
    }
}

TEST_F(Linking, ADatumIsCopiedIntoTheBaseOfABoundSystem)
{
    const auto definition = fromText(L"+proj=tmerc +lon_0=3 +ellps=bessel +towgs84=565.2,50.3,465.5,0,0,0,0");
    EXPECT_EQ(definition->SetDatum(loadDatum(L"EPSG:6289").get()), statusOk);
    EXPECT_EQ(datumCodeOf(*definition), L"EPSG:6289");
}

TEST_F(Linking, ALinkedSystemCanBeConvertedAndStored)
{
    const auto definition = loadSystem(L"EPSG:25832");
    EXPECT_EQ(definition->SetDatum(loadDatum(L"EPSG:6289").get()), statusOk);
    EXPECT_NE(writeWkt(*definition).find(L"DATUM[\"Amersfoort\""), std::wstring::npos);
    const auto copies = readStream(writeStream({definition.get()}));
    ASSERT_TRUE(copies);
    EXPECT_EQ(describe(*copies->GetItem(0)), describe(*definition));
}

TEST_F(Linking, ALocalSystemRefusesDatumAndEllipsoid)
{
    const auto definition = loadSystem(L"LOCAL:METRE");
    const std::wstring before = describe(*definition);
    EXPECT_EQ(definition->SetDatum(loadDatum(L"EPSG:6289").get()), statusUnsupported);
    EXPECT_EQ(definition->SetEllipsoid(loadEllipsoid(L"EPSG:7004").get()), statusUnsupported);
    EXPECT_EQ(describe(*definition), before);
}

TEST_F(Linking, NullIsRefusedAsAPart)
{
    const auto definition = loadSystem(L"EPSG:25832");
    EXPECT_EQ(definition->SetDatum(nullptr), statusInvalidArgument);
    EXPECT_EQ(definition->SetEllipsoid(nullptr), statusInvalidArgument);
    EXPECT_EQ(datumOf(*definition)->SetEllipsoid(nullptr), statusInvalidArgument);
}

} // namespace
