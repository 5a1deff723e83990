#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

constexpr const wchar_t* kProjectedWkt1 =
    L"PROJCS[\"Site\",GEOGCS[\"Base\",DATUM[\"Own datum\",SPHEROID[\"Own ellipsoid\",6378000,299]],"
    L"PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
    L"PARAMETER[\"latitude_of_origin\",0],PARAMETER[\"central_meridian\",9.5],PARAMETER[\"scale_factor\",1],"
    L"PARAMETER[\"false_easting\",1000],PARAMETER[\"false_northing\",2000],UNIT[\"metre\",1]]";

class UserDefinedSystem : public SpatialReferenceTest {
protected:
    static Status createStatus(const wchar_t* text, const wchar_t* code = L"USER:1")
    {
        CoordinateReferenceSystemDefinition* definition = nullptr;
        const Status result = CoordinateReferenceSystemDefinition::CreateFromText(text, code, definition);
        const Holder<CoordinateReferenceSystemDefinition> held(definition);
        EXPECT_EQ(definition != nullptr, result == statusOk);
        return result;
    }
};

TEST_F(UserDefinedSystem, ASystemHasTheGivenCodeAndTheNameOfItsText)
{
    const auto definition = fromText(kProjectedWkt1, L"MY:SITE 7");
    EXPECT_EQ(codeOf(*definition), L"MY:SITE 7");
    EXPECT_EQ(nameOf(*definition), L"Site");
    EXPECT_EQ(kindOf(*definition), kindProjected);
}

TEST_F(UserDefinedSystem, PartsWithoutAnIdentifierHaveTheirNamesAsCodes)
{
    const auto definition = fromText(kProjectedWkt1);
    EXPECT_EQ(datumCodeOf(*definition), L"Own datum");
    EXPECT_EQ(ellipsoidCodeOf(*definition), L"Own ellipsoid");
    EXPECT_EQ(codeOf(*datumOf(*definition)), L"Own datum");
    EXPECT_EQ(codeOf(*ellipsoidOf(*definition)), L"Own ellipsoid");
}

TEST_F(UserDefinedSystem, AUserDefinedSystemIsUnknownToTheCatalog)
{
    const auto made = fromText(kProjectedWkt1, L"MY:SITE");
    CoordinateReferenceSystemDefinition* definition = nullptr;
    EXPECT_EQ(CoordinateReferenceSystemDefinition::Load(codeOf(*made).c_str(), definition), statusNotFound);
}

TEST_F(UserDefinedSystem, AUserDefinedSystemCanBeStored)
{
    const auto definition = fromText(kProjectedWkt1);
    const auto copies = readStream(writeStream({definition.get()}));
    ASSERT_TRUE(copies);
    EXPECT_EQ(describe(*copies->GetItem(0)), describe(*definition));
    Holder<DefinitionBaseArray> fromTextForm;
    EXPECT_EQ(deserialize(serializedText(*definition, true), fromTextForm), statusOk);
    EXPECT_EQ(fromTextForm->GetCount(), 3);
}

TEST_F(UserDefinedSystem, AUserDefinedSystemEqualsTheOneReadFromItsWkt)
{
    const auto definition = fromText(kProjectedWkt1);
    const auto again = fromText(writeWkt(*definition));
    EXPECT_EQ(writeWkt(*again), writeWkt(*definition));
}

struct TextCase {
    const wchar_t* text;
    int kind;
    const wchar_t* datum;
};

class UserText : public UserDefinedSystem, public testing::WithParamInterface<TextCase> {};

TEST_P(UserText, EachFormOfTextGivesASystemOfItsKind)
{
    const auto definition = fromText(GetParam().text);
    EXPECT_EQ(kindOf(*definition), GetParam().kind);
    EXPECT_EQ(datumCodeOf(*definition), GetParam().datum);
    const auto copies = readStream(writeStream({definition.get()}));
    ASSERT_TRUE(copies);
    EXPECT_EQ(describe(*copies->GetItem(0)), describe(*definition));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, UserText,
    testing::Values(
        TextCase{L"  \n+proj=utm +zone=32 +datum=WGS84 +units=m +no_defs\n", kindProjected, L"EPSG:6326"},
        TextCase{L"proj=longlat datum=WGS84", kindGeographic, L"EPSG:6326"},
        TextCase{L"+proj=longlat +ellps=bessel +type=crs", kindGeographic, L""},
        TextCase{L"+proj=geocent +ellps=GRS80", kindGeocentric, L""},
        TextCase{L"+proj=tmerc +lon_0=3 +ellps=bessel +towgs84=565,50,465,1,2,3,4", kindProjected, L""},
        TextCase{L"+proj=ob_tran +o_proj=longlat +o_lat_p=30 +o_lon_p=0 +lon_0=10 +datum=WGS84", kindGeographic,
                 L"EPSG:6326"},
        TextCase{L"\xFEFFGEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],"
                 L"PRIMEM[\"Greenwich\",0.0],UNIT[\"Degree\",0.0174532925199433]]",
                 kindGeographic, L"EPSG:6326"},
        TextCase{L"GEOGCRS[\"Mine\",DATUM[\"Mine too\",ELLIPSOID[\"Sphere\",6371000,0]],CS[ellipsoidal,2],"
                 L"AXIS[\"lat\",north],AXIS[\"lon\",east],ANGLEUNIT[\"degree\",0.0174532925199433]]",
                 kindGeographic, L"Mine too"},
        TextCase{L"{\"type\":\"GeographicCRS\",\"name\":\"J\",\"datum\":{\"type\":\"GeodeticReferenceFrame\",\"name\":"
                 L"\"D\",\"ellipsoid\":{\"name\":\"E\",\"radius\":6371000}},\"coordinate_system\":{\"subtype\":"
                 L"\"ellipsoidal\",\"axis\":[{\"name\":\"Latitude\",\"abbreviation\":\"lat\",\"direction\":\"north\","
                 L"\"unit\":\"degree\"},{\"name\":\"Longitude\",\"abbreviation\":\"lon\",\"direction\":\"east\","
                 L"\"unit\":\"degree\"}]}}",
                 kindGeographic, L"D"},
        TextCase{L"LOCAL_CS[\"Plane\",UNIT[\"metre\",1]]", kindNotEarthReferenced, L""},
        TextCase{L"ENGCRS[\"Yard\",EDATUM[\"Peg 1\"],CS[Cartesian,2],AXIS[\"x\",southWest],AXIS[\"y\",southEast],"
                 L"LENGTHUNIT[\"metre\",1]]",
                 kindNotEarthReferenced, L""},
        TextCase{L"COMPD_CS[\"Both\",GEOGCS[\"G\",DATUM[\"D\",SPHEROID[\"S\",6378137,298]],PRIMEM[\"Greenwich\",0],"
                 L"UNIT[\"degree\",0.0174532925199433]],VERT_CS[\"V\",VERT_DATUM[\"H\",2005],UNIT[\"metre\",1]]]",
                 kindGeographic, L"D"}));

class ForeignText : public UserDefinedSystem, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(ForeignText, ATextOfAnotherKindIsUnreadable)
{
    EXPECT_EQ(createStatus(GetParam()), statusUnreadable);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, ForeignText,
    testing::Values(L"", L" \n", L"EPSG:4326", L"WGS 84", L"4326", L"urn:ogc:def:crs:EPSG::4326",
                    L"https://www.opengis.net/def/crs/EPSG/0/4326", L"+init=epsg:4326", L"nonsense", L"{", L"{}", L"[",
                    L"PROJCS[", L"PROJCS[\"x\"]", L"+proj=nowhere", L"+proj=pipeline +step +proj=utm +zone=32",
                    L"VERT_CS[\"V\",VERT_DATUM[\"H\",2005],UNIT[\"metre\",1]]",
                    L"TIMECRS[\"T\",TDATUM[\"G\"],CS[TemporalDateTime,1],AXIS[\"time (T)\",future]]",
                    L"ELLIPSOID[\"E\",6378137,298,LENGTHUNIT[\"metre\",1]]",
                    L"DATUM[\"D\",ELLIPSOID[\"E\",6378137,298,LENGTHUNIT[\"metre\",1]]]",
                    L"{\"type\":\"Ellipsoid\",\"name\":\"E\",\"radius\":6371000}"));

TEST_F(UserDefinedSystem, ADeeplyNestedTextIsUnreadable)
{
    std::wstring json;
    std::wstring wkt;
    for (int level = 0; level < 10000; ++level) {
        json += L"{\"type\":\"BoundCRS\",\"source_crs\":";
        wkt += L"BOUNDCRS[SOURCECRS[";
    }
    EXPECT_EQ(createStatus((json + L"1" + std::wstring(10000, L'}')).c_str()), statusUnreadable);
    EXPECT_EQ(createStatus((wkt + std::wstring(20000, L']')).c_str()), statusUnreadable);
}

TEST_F(UserDefinedSystem, AMissingTextHasItsOwnStatus)
{
    EXPECT_EQ(createStatus(nullptr), statusNullText);
}

TEST_F(UserDefinedSystem, ACodeIsRequired)
{
    EXPECT_EQ(createStatus(kProjectedWkt1, nullptr), statusInvalidArgument);
    EXPECT_EQ(createStatus(kProjectedWkt1, L""), statusInvalidArgument);
    const wchar_t unpaired[] = {wchar_t(0xD800), L'\0'};
    EXPECT_EQ(createStatus(kProjectedWkt1, unpaired), statusInvalidArgument);
}

TEST_F(UserDefinedSystem, AnotherCodeReplacesTheIdentifierOfTheText)
{
    const std::wstring wkt = writeWkt(*loadSystem(L"EPSG:28992"));
    const auto other = fromText(wkt, L"MY:RD");
    EXPECT_EQ(writeWkt(*other).find(L"28992"), std::wstring::npos);
    EXPECT_EQ(datumCodeOf(*other), L"EPSG:6289");
    const auto same = fromText(wkt, L"EPSG:28992");
    EXPECT_EQ(writeWkt(*same), wkt);
}

TEST_F(UserDefinedSystem, AnEnsembleBecomesItsDatum)
{
    const auto definition = fromText(
        L"GEOGCRS[\"Mine\",ENSEMBLE[\"World Geodetic System 1984 ensemble\",MEMBER[\"World Geodetic System 1984 "
        L"(Transit)\"],MEMBER[\"World Geodetic System 1984 (G730)\"],ELLIPSOID[\"WGS 84\",6378137,298.257223563],"
        L"ENSEMBLEACCURACY[2.0],ID[\"EPSG\",6326]],CS[ellipsoidal,2],AXIS[\"lat\",north],AXIS[\"lon\",east],"
        L"ANGLEUNIT[\"degree\",0.0174532925199433]]");
    EXPECT_EQ(datumCodeOf(*definition), L"EPSG:6326");
    EXPECT_EQ(nameOf(*datumOf(*definition)), L"World Geodetic System 1984");
}

TEST_F(UserDefinedSystem, AnUnknownDatumCountsAsMissing)
{
    const auto definition = fromText(L"+proj=utm +zone=32 +ellps=GRS80");
    EXPECT_FALSE(isDatumBased(*definition));
    EXPECT_EQ(ellipsoidCodeOf(*definition), L"EPSG:7019");
}

} // namespace
