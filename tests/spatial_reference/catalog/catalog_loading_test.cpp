#include "embedded/spatial_reference/catalog/catalog.h"
#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

class CatalogLoading : public SpatialReferenceTest {
protected:
    static Status loadStatus(const wchar_t* code)
    {
        CoordinateReferenceSystemDefinition* definition = nullptr;
        const Status status = CoordinateReferenceSystemDefinition::Load(code, definition);
        const Holder<CoordinateReferenceSystemDefinition> held(definition);
        EXPECT_EQ(definition != nullptr, status == statusOk);
        return status;
    }
};

TEST_F(CatalogLoading, ASystemKnowsItsCodeNameAndKind)
{
    const auto definition = loadSystem(L"EPSG:25832");
    EXPECT_EQ(codeOf(*definition), L"EPSG:25832");
    EXPECT_EQ(nameOf(*definition), L"ETRS89 / UTM zone 32N");
    EXPECT_EQ(kindOf(*definition), kindProjected);
}

TEST_F(CatalogLoading, AuthorityIsFoundInAnyCaseAndReturnedInTheCatalogsSpelling)
{
    EXPECT_EQ(codeOf(*loadSystem(L"epsg:25832")), L"EPSG:25832");
    EXPECT_EQ(codeOf(*loadSystem(L"Esri:102100")), L"ESRI:102100");
    EXPECT_EQ(codeOf(*loadSystem(L"ogc:CRS84")), L"OGC:CRS84");
    EXPECT_EQ(codeOf(*loadSystem(L"local:METRE")), L"LOCAL:METRE");
}

struct SystemFacts {
    const wchar_t* code;
    int kind;
    const wchar_t* datum;
    const wchar_t* ellipsoid;
};

class KnownSystem : public CatalogLoading, public testing::WithParamInterface<SystemFacts> {};

TEST_P(KnownSystem, HasItsKindDatumAndEllipsoid)
{
    const auto& facts = GetParam();
    const auto definition = loadSystem(facts.code);
    EXPECT_EQ(kindOf(*definition), facts.kind);
    EXPECT_EQ(datumCodeOf(*definition), facts.datum);
    EXPECT_EQ(ellipsoidCodeOf(*definition), facts.ellipsoid);
    EXPECT_TRUE(isDatumBased(*definition));
    EXPECT_EQ(codeOf(*datumOf(*definition)), facts.datum);
    EXPECT_EQ(codeOf(*ellipsoidOf(*definition)), facts.ellipsoid);
}

INSTANTIATE_TEST_SUITE_P(
    Catalog, KnownSystem,
    testing::Values(SystemFacts{L"EPSG:25832", kindProjected, L"EPSG:6258", L"EPSG:7019"},   // a datum ensemble
                    SystemFacts{L"EPSG:4326", kindGeographic, L"EPSG:6326", L"EPSG:7030"},   // a datum ensemble
                    SystemFacts{L"EPSG:4979", kindGeographic, L"EPSG:6326", L"EPSG:7030"},   // with heights
                    SystemFacts{L"EPSG:4978", kindGeocentric, L"EPSG:6326", L"EPSG:7030"},   // geocentric
                    SystemFacts{L"EPSG:2263", kindProjected, L"EPSG:6269", L"EPSG:7019"},    // US survey feet
                    SystemFacts{L"EPSG:27700", kindProjected, L"EPSG:6277", L"EPSG:7001"},   //
                    SystemFacts{L"EPSG:28992", kindProjected, L"EPSG:6289", L"EPSG:7004"},   //
                    SystemFacts{L"EPSG:27572", kindProjected, L"EPSG:6807", L"EPSG:7011"},   // from Paris, in grads
                    SystemFacts{L"EPSG:3785", kindProjected, L"EPSG:6055", L"EPSG:7059"},    // deprecated, a sphere
                    SystemFacts{L"EPSG:7415", kindProjected, L"EPSG:6289", L"EPSG:7004"},    // compound
                    SystemFacts{L"EPSG:9518", kindGeographic, L"EPSG:6326", L"EPSG:7030"})); // compound, geographic

TEST_F(CatalogLoading, ACodeThatIsNotANumberKeepsItsSpelling)
{
    const auto definition = loadSystem(L"ESRI:4812");
    EXPECT_EQ(datumCodeOf(*definition), L"ESRI:106011_Paris");
}

TEST_F(CatalogLoading, AnUnknownCodeIsNotFound)
{
    for (const wchar_t* code :
         {L"EPSG:1", L"EPSG:99999999", L"NOBODY:4326", L"EPSG: 4326", L"EPSG:4326 ", L"EPSG:04326", L"EPSG:4326.0",
          L"EPSG:4.326e3", L"EPSG:+4326", L"LOCAL:1", L"EPSG:", L":4326", L":", L"EPSG", L"WGS 84", L"4326", L""})
        EXPECT_EQ(loadStatus(code), statusNotFound) << code;
    EXPECT_EQ(loadStatus(nullptr), statusNotFound);
}

TEST_F(CatalogLoading, AVerticalSystemIsNotFound)
{
    EXPECT_EQ(loadStatus(L"EPSG:5773"), statusNotFound);
}

TEST_F(CatalogLoading, TheCodeOfADatumIsNotFoundAsASystem)
{
    EXPECT_EQ(loadStatus(L"EPSG:6326"), statusNotFound);
}

TEST_F(CatalogLoading, LocalSystemsAreNotReferencedToTheEarth)
{
    for (const wchar_t* code : {L"LOCAL:METRE", L"LOCAL:FOOT", L"LOCAL:US-SURVEY-FOOT"}) {
        const auto definition = loadSystem(code);
        EXPECT_EQ(codeOf(*definition), code);
        EXPECT_EQ(kindOf(*definition), kindNotEarthReferenced);
        EXPECT_EQ(datumCodeOf(*definition), L"");
        EXPECT_EQ(ellipsoidCodeOf(*definition), L"");
        EXPECT_FALSE(isDatumBased(*definition));
    }
}

TEST_F(CatalogLoading, TheDatumAndEllipsoidOfALocalSystemAreNotFound)
{
    const auto definition = loadSystem(L"LOCAL:METRE");
    DatumDefinition* datum = nullptr;
    EXPECT_EQ(definition->GetDatum(datum), statusNotFound);
    EXPECT_EQ(datum, nullptr);
    EllipsoidDefinition* ellipsoid = nullptr;
    EXPECT_EQ(CoordinateReferenceSystemUtil::GetEllipsoid(definition.get(), ellipsoid), statusNotFound);
    EXPECT_EQ(ellipsoid, nullptr);
}

TEST_F(CatalogLoading, AnUnspecifiedDatumCountsAsMissing)
{
    const auto definition = loadSystem(L"EPSG:4001"); // Unknown datum based upon the Airy 1830 ellipsoid
    EXPECT_EQ(datumCodeOf(*definition), L"");
    EXPECT_EQ(ellipsoidCodeOf(*definition), L"EPSG:7001");
    EXPECT_FALSE(isDatumBased(*definition));
    DatumDefinition* datum = nullptr;
    EXPECT_EQ(definition->GetDatum(datum), statusNotFound);
    EXPECT_EQ(codeOf(*ellipsoidOf(*definition)), L"EPSG:7001");
}

TEST_F(CatalogLoading, TheDatumOfASystemEqualsTheDatumLoadedByItsCode)
{
    for (const wchar_t* code : {L"EPSG:25832", L"EPSG:4326", L"EPSG:27572", L"EPSG:7415", L"EPSG:2263"}) {
        const auto part = datumOf(*loadSystem(code));
        EXPECT_EQ(describe(*part), describe(*loadDatum(codeOf(*part)))) << code;
    }
}

TEST_F(CatalogLoading, ADatumHasAnEllipsoid)
{
    const auto definition = loadDatum(L"epsg:6289");
    EXPECT_EQ(nameOf(*definition), L"Amersfoort");
    const wchar_t* code = nullptr;
    EXPECT_EQ(definition->GetEllipsoidCode(code), statusOk);
    EXPECT_STREQ(code, L"EPSG:7004");
    EllipsoidDefinition* part = nullptr;
    EXPECT_EQ(definition->GetEllipsoid(part), statusOk);
    const Holder<EllipsoidDefinition> held(part);
    EXPECT_EQ(describe(*held), describe(*loadEllipsoid(L"EPSG:7004")));
}

TEST_F(CatalogLoading, AVerticalDatumIsNotFound)
{
    DatumDefinition* definition = nullptr;
    EXPECT_EQ(DatumDefinition::Load(L"EPSG:5171", definition), statusNotFound);
    EXPECT_EQ(definition, nullptr);
}

struct EllipsoidFacts {
    const wchar_t* code;
    double semiMajorAxis;
    double inverseFlattening;
};

class KnownEllipsoid : public CatalogLoading, public testing::WithParamInterface<EllipsoidFacts> {};

TEST_P(KnownEllipsoid, HasItsFigureInMetres)
{
    const auto definition = loadEllipsoid(GetParam().code);
    double axis = 0;
    EXPECT_EQ(definition->GetSemiMajorAxisInMetres(axis), statusOk);
    EXPECT_NEAR(axis, GetParam().semiMajorAxis, 1e-6);
    double flattening = -1;
    EXPECT_EQ(definition->GetInverseFlattening(flattening), statusOk);
    EXPECT_NEAR(flattening, GetParam().inverseFlattening, 1e-8);
}

INSTANTIATE_TEST_SUITE_P(Catalog, KnownEllipsoid,
                         testing::Values(EllipsoidFacts{L"EPSG:7019", 6378137, 298.257222101},
                                         EllipsoidFacts{L"EPSG:7008", 6378206.4, 294.97869821}, // by its minor axis
                                         EllipsoidFacts{L"EPSG:7042", 6377299.365595, 300.80172554}, // Indian feet
                                         EllipsoidFacts{L"EPSG:7048", 6371007, 0}));                 // a sphere

TEST_F(CatalogLoading, ANullSystemIsRefused)
{
    CoordinateReferenceSystemOperation* operation = nullptr;
    EXPECT_EQ(CoordinateReferenceSystemOperation::Load(nullptr, operation), statusInvalidArgument);
    EXPECT_EQ(operation, nullptr);
    EllipsoidDefinition* figure = nullptr;
    EXPECT_EQ(CoordinateReferenceSystemUtil::GetEllipsoid(nullptr, figure), statusInvalidArgument);
    EXPECT_EQ(figure, nullptr);
}

TEST_F(CatalogLoading, RepeatedLoadsGiveEqualSystems)
{
    for (int repeat = 0; repeat < 3; ++repeat)
        EXPECT_EQ(describe(*loadSystem(L"EPSG:7415")), describe(*loadSystem(L"EPSG:7415")));
}

} // namespace
