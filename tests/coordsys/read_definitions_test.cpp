#include "storage/definition_group.h"
#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::FaultInjection;

const Texts kUtm32{L"system EPSG:25832", L"datum EPSG:6258", L"ellipsoid EPSG:7019"};

class ReadDefinitions : public CoordsysTest {
protected:
    ArrayHolder definitions;

    Qeapp::ErrorStatus read() { return Cs::GetCoordinateSystem(definitions.put(), database(), &status); }
};

Items makeGroup(const Library::DefinitionBase* definition)
{
    return readChain(Orvel::DefinitionToResbufGroup(definition).get());
}

TEST_F(ReadDefinitions, EmptyDrawing_GivesAnEmptyArray)
{
    EXPECT_EQ(read(), Qeapp::eOk);
    ASSERT_TRUE(definitions);
    EXPECT_EQ(definitions->GetCount(), 0);
}

TEST_F(ReadDefinitions, EmptyDrawing_ReportsStatusZero)
{
    ASSERT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(status, 0);
}

TEST_F(ReadDefinitions, BlankGeoData_GivesAnEmptyArray)
{
    drawing.withGeoData(L"");
    EXPECT_EQ(read(), Qeapp::eOk);
    ASSERT_TRUE(definitions);
    EXPECT_EQ(definitions->GetCount(), 0);
}

TEST_F(ReadDefinitions, GeoDataText_GivesItsDefinitions)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), kUtm32);
}

TEST_F(ReadDefinitions, GeoDataText_ReportsStatusZero)
{
    storeSystem(L"EPSG:25832");
    ASSERT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(status, 0);
}

TEST_F(ReadDefinitions, GeoDataText_GivesItsDefinitionsInTheirOrder)
{
    drawing.withGeoData(joinTexts({serializedText(catalogDatum(L"EPSG:6258").get(), false),
                                   serializedText(catalogEllipsoid(L"EPSG:7019").get(), false),
                                   serializedText(catalogSystem(L"EPSG:25832").get(), false)}));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts({kUtm32[1], kUtm32[2], kUtm32[0]}));
}

TEST_F(ReadDefinitions, GeoDataText_NeedsNoCatalog)
{
    storeSystem(L"EPSG:25832");
    FaultInjection::watch();
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(countCalls("CoordinateReferenceSystemDefinition::Load"), 0U);
}

TEST_F(ReadDefinitions, UserDefinedSystemInGeoData_IsRead)
{
    drawing.withGeoData(serializedText(userSystem().get(), false));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system MINE:1"});
}

TEST_F(ReadDefinitions, UnreadableGeoDataText_ReturnsInvalidInput)
{
    drawing.withGeoData(L"no definition at all");
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    EXPECT_FALSE(definitions);
}

TEST_F(ReadDefinitions, LegacyCodeWithXrecord_GivesSystemDatumAndEllipsoid)
{
    drawing.withLegacyCode(L"EPSG:25832");
    storeXrecord(catalogSystem(L"EPSG:25832"));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), kUtm32);
    EXPECT_EQ(status, 0);
}

TEST_F(ReadDefinitions, LegacyCodeWithXrecord_NeedsNoCatalog)
{
    drawing.withLegacyCode(L"MINE:1");
    storeXrecord(userSystem());
    FaultInjection::watch();
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(countCalls("CoordinateReferenceSystemDefinition::Load"), 0U);
    EXPECT_EQ(describe(definitions).at(0), L"system MINE:1");
}

TEST_F(ReadDefinitions, LegacyCodeWithXrecord_GivesTheSystemFirstForAnyStoredOrder)
{
    Items chain{{1071, 1}};
    for (const Items& items :
         {makeGroup(catalogEllipsoid(L"EPSG:7019").get()), makeGroup(catalogDatum(L"EPSG:6258").get()),
          makeGroup(catalogSystem(L"EPSG:25832").get())})
        chain.insert(chain.end(), items.begin(), items.end());
    drawing.withLegacyCode(L"EPSG:25832").withXrecord(chain);
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), kUtm32);
}

TEST_F(ReadDefinitions, LegacyCodeWithXrecordOfASystemWithoutDatum_GivesOnlyTheSystem)
{
    drawing.withLegacyCode(L"LOCAL:METRE");
    storeXrecord(catalogSystem(L"LOCAL:METRE"));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(status, Library::statusOk);
    EXPECT_EQ(describe(definitions), Texts{L"system LOCAL:METRE"});
}

TEST_F(ReadDefinitions, LegacyCodeWithoutXrecord_GivesOnlyTheCatalogsSystem)
{
    drawing.withLegacyCode(L"EPSG:25832");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"});
    EXPECT_EQ(status, 0);
}

TEST_F(ReadDefinitions, LegacyCodeWithXrecordOfAnotherSystem_GivesTheCatalogsSystem)
{
    drawing.withLegacyCode(L"EPSG:2263");
    storeXrecord(catalogSystem(L"EPSG:25832"));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:2263"});
}

TEST_F(ReadDefinitions, LegacyCodeWithUnreadableXrecord_GivesTheCatalogsSystem)
{
    drawing.withLegacyCode(L"EPSG:2263").withXrecord({{1071, 1}, {300, L"something else"}});
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:2263"});
}

TEST_F(ReadDefinitions, LegacyCodeInAnotherCase_IsLoadedFromTheCatalog)
{
    drawing.withLegacyCode(L"epsg:25832");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"});
}

TEST_F(ReadDefinitions, LegacyCodeWithoutADefinition_ReturnsNotApplicable)
{
    drawing.withLegacyCode(L"MINE:1");
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_EQ(status, 77);
}

TEST_F(ReadDefinitions, LegacyCodeWithoutADefinition_GivesAnEmptyArray)
{
    drawing.withLegacyCode(L"MINE:1");
    ASSERT_EQ(read(), Qeapp::eNotApplicable);
    ASSERT_TRUE(definitions);
    EXPECT_EQ(definitions->GetCount(), 0);
}

TEST_F(ReadDefinitions, LegacyCodeOfADot_IsIgnoredAndGeoDataIsRead)
{
    storeSystem(L"EPSG:25832");
    drawing.withLegacyCode(L".");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), kUtm32);
}

TEST_F(ReadDefinitions, EmptyLegacyCode_IsIgnoredAndGeoDataIsRead)
{
    storeSystem(L"EPSG:25832");
    drawing.withLegacyCode(L"");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), kUtm32);
}

TEST_F(ReadDefinitions, LegacyCode_IsPreferredToGeoData)
{
    storeSystem(L"EPSG:25832");
    drawing.withLegacyCode(L"EPSG:2263");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:2263"});
}

TEST_F(ReadDefinitions, LegacyCodeWithoutADefinition_DoesNotReadGeoData)
{
    storeSystem(L"EPSG:25832");
    drawing.withLegacyCode(L"MINE:1");
    FaultInjection::watch();
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_EQ(countCalls("qedbGetGeoDataObjId"), 0U);
}

TEST_F(ReadDefinitions, XrecordWithoutLegacyCode_IsIgnored)
{
    storeXrecord(catalogSystem(L"EPSG:25832"));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts());
}

TEST_F(ReadDefinitions, NullStatus_IsAllowed)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(Cs::GetCoordinateSystem(definitions.put(), database()), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), kUtm32);
}

TEST_F(ReadDefinitions, EveryReading_GivesANewArray)
{
    storeSystem(L"EPSG:25832");
    ArrayHolder second;
    ASSERT_EQ(read(), Qeapp::eOk);
    ASSERT_EQ(Cs::GetCoordinateSystem(second.put(), database()), Qeapp::eOk);
    EXPECT_NE(definitions.get(), second.get());
}

TEST_F(ReadDefinitions, Reading_LeavesTheDrawingUnchanged)
{
    drawing.withLegacyCode(L"EPSG:25832").withGeoData(L"text");
    storeXrecord(catalogSystem(L"EPSG:25832"));
    const auto before = drawing.contents();
    ASSERT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(drawing.contents(), before);
}

} // namespace
