#include <algorithm>

#include "storage_version_test.h"

namespace Tests {
namespace {

using StorageVersion = StorageVersionTest;

TEST_F(StorageVersion, EveryVersionBelow30_WritesTheLegacyForms)
{
    for (const int version : {-1, 0, 21, 22, 28, 29}) {
        SCOPED_TRACE(version);
        storeSystem(L"EPSG:25832");
        EXPECT_EQ(apply(version), Qeapp::eOk);
        expectLegacyForms(L"EPSG:25832", catalogSystem(L"EPSG:25832"));
        drawing = Drawing();
    }
}

TEST_F(StorageVersion, EveryVersionFrom30_WritesTheText)
{
    for (const int version : {30, 31, 33, 34, 1000}) {
        SCOPED_TRACE(version);
        storeAllForms(L"EPSG:25832");
        EXPECT_EQ(apply(version), Qeapp::eOk);
        expectText(catalogSystem(L"EPSG:25832"));
        drawing = Drawing();
    }
}

TEST_F(StorageVersion, ConversionThereAndBack_GivesTheSameText)
{
    for (const wchar_t* const code : {L"EPSG:25832", L"EPSG:4326", L"EPSG:4979", L"EPSG:7415", L"LOCAL:METRE"}) {
        storeSystem(code);
        EXPECT_EQ(apply(29), Qeapp::eOk);
        expectLegacyForms(code, catalogSystem(code));
        EXPECT_EQ(apply(33), Qeapp::eOk);
        expectText(catalogSystem(code));
        drawing = Drawing();
    }
}

TEST_F(StorageVersion, RepeatedConversion_GivesTheSameForms)
{
    storeSystem(L"EPSG:25832");
    for (const int version : {29, 29, 30, 30})
        ASSERT_EQ(apply(version), Qeapp::eOk);
    expectText(catalogSystem(L"EPSG:25832"));
    for (const int version : {29, 29})
        ASSERT_EQ(apply(version), Qeapp::eOk);
    expectLegacyForms(L"EPSG:25832", catalogSystem(L"EPSG:25832"));
}

TEST_F(StorageVersion, LegacyCodeWithoutOtherForms_BecomesText)
{
    drawing.withLegacyCode(L"EPSG:25832");
    EXPECT_EQ(apply(30), Qeapp::eOk);
    expectText(catalogSystem(L"EPSG:25832"));
}

TEST_F(StorageVersion, LegacyCodeWithoutOtherForms_BecomesAllLegacyForms)
{
    drawing.withLegacyCode(L"EPSG:25832");
    EXPECT_EQ(apply(29), Qeapp::eOk);
    expectLegacyForms(L"EPSG:25832", catalogSystem(L"EPSG:25832"));
}

TEST_F(StorageVersion, LegacyCode_IsPreferredToTheText)
{
    storeSystem(L"EPSG:2263");
    drawing.withLegacyCode(L"EPSG:25832");
    EXPECT_EQ(apply(30), Qeapp::eOk);
    expectText(catalogSystem(L"EPSG:25832"));
}

TEST_F(StorageVersion, LegacyCodeOfADot_IsIgnoredForTheText)
{
    storeSystem(L"EPSG:2263");
    drawing.withLegacyCode(L".");
    EXPECT_EQ(apply(30), Qeapp::eOk);
    expectText(catalogSystem(L"EPSG:2263"));
}

TEST_F(StorageVersion, LocalSystem_IsStoredAsAnXrecordOfOneDefinition)
{
    storeSystem(L"LOCAL:METRE");
    EXPECT_EQ(apply(29), Qeapp::eOk);
    expectLegacyForms(L"LOCAL:METRE", catalogSystem(L"LOCAL:METRE"));
    const Items chain = drawing.xrecord().value_or(Items());
    EXPECT_EQ(std::ranges::count(chain, Item{1002, L"{"}), 1);
}

TEST_F(StorageVersion, GeographicSystem_IsStoredAsAnXrecordOfThreeDefinitions)
{
    storeSystem(L"EPSG:4326");
    EXPECT_EQ(apply(29), Qeapp::eOk);
    const Items chain = drawing.xrecord().value_or(Items());
    EXPECT_EQ(std::ranges::count(chain, Item{1002, L"{"}), 3);
}

TEST_F(StorageVersion, UserDefinedSystem_IsUnchangedByBothConversions)
{
    const SystemHolder own = userSystem(L"MINE:1");
    storeText(own);
    EXPECT_EQ(apply(29), Qeapp::eOk);
    expectLegacyForms(L"MINE:1", own);
    EXPECT_EQ(apply(30), Qeapp::eOk);
    expectText(own);
}

// Readers of the older forms compare with their own catalog.
TEST_F(StorageVersion, LegacyForms_HoldTheCatalogsDefinitionOfTheCode)
{
    storeText(userSystem(L"EPSG:25832"));
    EXPECT_EQ(apply(29), Qeapp::eOk);
    expectLegacyForms(L"EPSG:25832", catalogSystem(L"EPSG:25832"));
}

TEST_F(StorageVersion, Text_KeepsTheDrawingsOwnDefinitionOfTheCode)
{
    const SystemHolder own = userSystem(L"EPSG:25832");
    storeText(own);
    EXPECT_EQ(apply(33), Qeapp::eOk);
    expectText(own);
}

TEST_F(StorageVersion, DrawingWithoutASystem_GetsNoForm)
{
    for (const int version : {21, 29, 30, 33}) {
        status = kUntouched;
        EXPECT_EQ(apply(version), Qeapp::eOk) << version;
        EXPECT_EQ(drawing.geoDataText(), std::nullopt) << version;
        EXPECT_EQ(drawing.legacyChain(), std::nullopt) << version;
        EXPECT_EQ(drawing.xrecord(), std::nullopt) << version;
        EXPECT_EQ(status, 0) << version;
    }
}

TEST_F(StorageVersion, DrawingWithoutASystem_LosesIncompleteForms)
{
    drawing.withLegacyCode(L".").withGeoData(L"").withXrecord({{1071, 1}});
    EXPECT_EQ(apply(29), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

// The text has definitions but no system. Looking up the missing code gives 35.
TEST_F(StorageVersion, TextWithoutASystem_IsRemovedWithStatus35)
{
    for (const int version : {29, 30}) {
        drawing.withGeoData(serializedText(catalogDatum(L"EPSG:6258").get()));
        status = kUntouched;
        EXPECT_EQ(apply(version), Qeapp::eOk);
        EXPECT_EQ(status, 35);
        expectNoForm();
        drawing = Drawing();
    }
}

TEST_F(StorageVersion, OtherContents_AreUnchanged)
{
    storeSystem(L"EPSG:25832");
    drawing.withXrecord({{300, L"mine"}}, L"OTHER").withDictionary(L"ORVEL_CS_TRANSFORMATION_CONFIG");
    ASSERT_EQ(apply(29), Qeapp::eOk);
    ASSERT_EQ(apply(33), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(L"OTHER"), (Items{{300, L"mine"}}));
    EXPECT_EQ(drawing.database()->drawingVersion(), QeDb::kCurrentDwg) << "the host sets the drawing version";
}

TEST_F(StorageVersion, Success_ReportsStatusZero)
{
    storeSystem(L"EPSG:25832");
    for (const int version : {29, 30}) {
        status = kUntouched;
        ASSERT_EQ(apply(version), Qeapp::eOk);
        EXPECT_EQ(status, 0) << version;
    }
}

// Reading such a system recorded 35, and writing it recorded 0.
TEST_F(StorageVersion, SystemOutsideTheCatalog_ReportsStatusZero)
{
    storeText(userSystem(L"MINE:1"));
    for (const int version : {29, 30}) {
        status = kUntouched;
        ASSERT_EQ(apply(version), Qeapp::eOk);
        EXPECT_EQ(status, 0) << version;
    }
}

// The library reports the WKT of this system as inexact.
TEST_F(StorageVersion, InexactWkt_ReportsStatusZero)
{
    storeSystem(L"EPSG:4979");
    ASSERT_EQ(apply(29), Qeapp::eOk);
    EXPECT_EQ(status, 0);
}

TEST_F(StorageVersion, NullStatus_IsAllowed)
{
    storeSystem(L"EPSG:25832");
    for (const auto version : {QeDb::kOldestDwg, QeDb::kCurrentDwg})
        EXPECT_EQ(Cs::ApplyCoordinateSystemStorageVersion(database(), version), Qeapp::eOk);
}

TEST_F(StorageVersion, Conversion_NotifiesNoReactor)
{
    storeSystem(L"EPSG:25832");
    for (const int version : {29, 30})
        ASSERT_EQ(apply(version), Qeapp::eOk);
    EXPECT_EQ(log, Notices());
}

TEST_F(StorageVersion, Conversion_AsksNoReactor)
{
    storeSystem(L"EPSG:25832");
    reactor.answer = [](const Notice&) { return false; };
    EXPECT_EQ(apply(29), Qeapp::eOk);
    expectLegacyForms(L"EPSG:25832", catalogSystem(L"EPSG:25832"));
}

} // namespace
} // namespace Tests
